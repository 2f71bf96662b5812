// Sibling libraries that answer wrongly while a receiver is initialised and logs: factories whose result and pointer
// contradict each other, services that fail at everything, an answer that changes between two calls. Each in a process
// of its own, in which nothing was bound.
#include "kit/host/receiverFixture.h"

namespace {

using Texts = std::vector<std::string>;
using kit::Trace;

const std::set<std::string> allServices = {"IModuleFinder",    "BaseServiceOne",   "BaseServiceTwo",
                                           "BaseServiceThree", "FerrocoreService", "IMachineIdService",
                                           "ILogConfig",       "ILogWriter",       "ITextConverter"};

class LyingSiblings : public kit::ReceiverFixture {
protected:
    void SetUp() override {
        ReceiverFixture::SetUp();
        siblings.WriteIni("[OUTLOG]\r\nWriteLog=1\r\n");
    }

    static std::string Ready() { return Trace("mordRev.cpp CMordRecv::InitLogMoudle", "logger is ready"); }
    static std::string Found(const std::string& mid) {
        return Trace("localMid.cpp CMordRecv::GetLocalMid", "GetLocalMid()-Get local mid is:" + mid);
    }
    static std::string Got(const std::string& mid) {
        return Trace("mordRev.cpp CMordRecv::Init", "init get mid=" + mid);
    }

    // Everything of an Init went well.
    void ExpectReady() {
        EXPECT_TRUE(receiver->Init(&host));
        EXPECT_EQ(Fields().Mid(), "SCRIPTED-MACHINE");
        EXPECT_EQ(TakeRecords(), (Texts{Ready(), Found("SCRIPTED-MACHINE"), Got("SCRIPTED-MACHINE")}));
    }
};

TEST_F(LyingSiblings, FactoriesThatFillThePointerAndRefuseAreBelievedForTheirPointer) {
    siblings.grudging = allServices;
    ExpectReady();
    const Texts made = siblings.calls.Take();
    EXPECT_EQ(std::count(made.begin(), made.end(), "create BaseServiceOne"), 1) << "and is not asked for again";
}

// One after the other, each at its next use.
TEST_F(LyingSiblings, FactoriesThatSayYesAndLeaveThePointerHaveGivenNothing) {
    siblings.hollow = {"ILogConfig", "ILogWriter", "IMachineIdService"};
    EXPECT_FALSE(receiver->Init(&host));
    EXPECT_FALSE(Fields().Inited());
    EXPECT_EQ(Fields().Host(), nullptr);
    siblings.hollow.erase("ILogConfig");
    EXPECT_FALSE(receiver->Init(&host));
    EXPECT_FALSE(LogFileEnabled);
    EXPECT_EQ(siblings.calls.Take().back(), "ILogConfig.Release");
    siblings.hollow.erase("ILogWriter");
    EXPECT_TRUE(receiver->Init(&host));
    EXPECT_EQ(Fields().Mid(), "");
    EXPECT_EQ(TakeRecords(), (Texts{Ready(), Got("")}));
    receiver->Uninit();
    siblings.hollow.clear();
    ExpectReady();
}

TEST_F(LyingSiblings, FinderThatIsNoneThoughItsFactorySaysYesIsSoughtAgain) {
    siblings.hollow = {"IModuleFinder"};
    EXPECT_FALSE(receiver->Init(&host));
    EXPECT_FALSE(receiver->Init(&host));
    siblings.hollow.clear();
    ExpectReady();
}

TEST_F(LyingSiblings, LoggerThatFailsAtEverythingIsGivenEveryRecord) {
    for (const int32_t result : {1, -1, static_cast<int32_t>(0x80004005)}) {
        siblings.writerResult = result;
        siblings.calls.Take();
        ExpectReady();
        EXPECT_TRUE(LogFileEnabled);
        const Texts made = siblings.calls.Take();
        EXPECT_EQ(std::count(made.begin(), made.end(), "ILogWriter.SetLevel(0)"), 1);
        EXPECT_EQ(std::count(made.begin(), made.end(), "ILogWriter.Start(MORD_Recv,0)"), 1);
        receiver = std::make_unique<CMordRecv>();
    }
}

TEST_F(LyingSiblings, CountsOfReferencesPlayNoPart) {
    for (const int32_t count : {0, -1, 77}) {
        siblings.countResult = count;
        ExpectReady();
        receiver->Uninit();
        EXPECT_TRUE(receiver->Init(&host)) << "with a logger that is released and made anew";
        TakeRecords();
        siblings.calls.Take();
        receiver = std::make_unique<CMordRecv>();
        const Texts made = siblings.calls.Take();
        EXPECT_EQ(made, Texts{"IMachineIdService.Release"}) << "once, whatever it returned";
    }
}

TEST_F(LyingSiblings, ModuleThatIsFoundForTheLogAndNotForTheMachineIdLeavesTheIdEmpty) {
    siblings.calls.onAdd = [this](const std::string& call) {
        if (call == "ILogWriter.Start(MORD_Recv,0)") {
            siblings.finder = kit::ScriptedSiblings::Finder::GivesNull;
        }
    };
    EXPECT_TRUE(receiver->Init(&host));
    EXPECT_EQ(TakeRecords(), (Texts{Ready(), Got("")}));
    EXPECT_FALSE(Fields().HasMidService());
    siblings.finder = kit::ScriptedSiblings::Finder::GivesModuleWithoutFactory;
    EXPECT_EQ(receiver->GetLocalMid(), "");
    siblings.finder = kit::ScriptedSiblings::Finder::GivesZelkBase;
    EXPECT_EQ(receiver->GetLocalMid(), "SCRIPTED-MACHINE");
}

TEST_F(LyingSiblings, ConverterThatFillsEverythingWithoutANulGivesAMachineIdThatIsKept) {
    siblings.converterWritesNul = false;
    EXPECT_TRUE(receiver->Init(&host));
    // Sixteen units, for which the destination has room for four bytes each.
    EXPECT_EQ(Fields().Mid(), "SCRIPTED-MACHINE" + std::string(48, '#'));
}

} // namespace
