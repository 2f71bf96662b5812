// The machine id of this host, from the service of the base library.
#include <cstddef>

#include "kit/host/receiverFixture.h"

namespace {

using Texts = std::vector<std::string>;
using kit::Trace;
using Finder = kit::ScriptedSiblings::Finder;

static_assert(sizeof(MachineIdRecord) == 136);
static_assert(offsetof(MachineIdRecord, machineId) == 0);
static_assert(sizeof(MachineIdRecord::machineId) == 136);

class LocalMid : public kit::ReceiverFixture {
protected:
    void SetUp() override {
        ReceiverFixture::SetUp();
        StartLogging();
    }

    static std::string Found(const std::string& mid) {
        return Trace("localMid.cpp CMordRecv::GetLocalMid", "GetLocalMid()-Get local mid is:" + mid);
    }

    // The result is empty, nothing is logged and nothing is kept; `expected` are the siblings' calls.
    void ExpectSilentFailure(const Texts& expected) {
        EXPECT_EQ(receiver->GetLocalMid(), "");
        EXPECT_EQ(siblings.calls.Take(), expected);
        EXPECT_EQ(TakeRecords(), Texts());
        EXPECT_EQ(Fields().Mid(), "");
    }

    const Texts found{"IModuleFinder.FindModule(module.base)", "create IMachineIdService",
                      "IMachineIdService.GetMachineId"};
    const std::string failed = Trace("localMid.cpp CMordRecv::GetLocalMid", "Get local mid failed!");
};

TEST_F(LocalMid, IsAskedOfTheServiceBehindModuleBaseKeptAndLogged) {
    EXPECT_EQ(receiver->GetLocalMid(), "SCRIPTED-MACHINE");
    EXPECT_EQ(siblings.calls.Take(), found) << "and the record was cleared";
    EXPECT_EQ(Fields().Mid(), "SCRIPTED-MACHINE");
    EXPECT_TRUE(Fields().HasMidService());
    ASSERT_EQ(siblings.Records().size(), 1U);
    EXPECT_EQ(siblings.Records()[0].level, 30);
    EXPECT_EQ(TakeRecords(), Texts{Found("SCRIPTED-MACHINE")});
}

TEST_F(LocalMid, SecondCallReturnsTheSameTextAndDoesNotCallTheService) {
    receiver->GetLocalMid();
    siblings.calls.Take();
    TakeRecords();
    siblings.machineId = u"ANOTHER-MACHINE";
    EXPECT_EQ(receiver->GetLocalMid(), "SCRIPTED-MACHINE");
    EXPECT_EQ(siblings.calls.Take(), Texts());
    EXPECT_EQ(TakeRecords(), Texts());
}

TEST_F(LocalMid, OneThatIsKnownIsKeptByInitAndTheServiceIsNotCreated) {
    Fields().Mid() = "SET-BY-HOST";
    EXPECT_TRUE(receiver->Init(&host));
    EXPECT_EQ(Fields().Mid(), "SET-BY-HOST");
    EXPECT_FALSE(Fields().HasMidService());
    const Texts siblingCalls = siblings.calls.Take();
    EXPECT_EQ(std::count(siblingCalls.begin(), siblingCalls.end(), "create IMachineIdService"), 0);
    EXPECT_EQ(TakeRecords(), (Texts{Trace("mordRev.cpp CMordRecv::InitLogMoudle", "logger is ready"),
                                    Trace("mordRev.cpp CMordRecv::Init", "init get mid=SET-BY-HOST")}));
}

// The same by the public operations alone: a host comes to set the property before an Init by a first Init that found
// none.
TEST_F(LocalMid, OneSetByThePropertyBeforeInitIsKeptAndTheServiceIsNotCreated) {
    siblings.refused = {"IMachineIdService"};
    ASSERT_TRUE(receiver->Init(&host));
    char mid[] = "SET-BY-HOST";
    ASSERT_TRUE(receiver->SetProperty(PROP_MID, mid, sizeof mid));
    receiver->Uninit();
    siblings.refused.clear();
    siblings.calls.Take();
    EXPECT_TRUE(receiver->Init(&host));
    EXPECT_EQ(Fields().Mid(), "SET-BY-HOST");
    const Texts siblingCalls = siblings.calls.Take();
    EXPECT_EQ(std::count(siblingCalls.begin(), siblingCalls.end(), "create IMachineIdService"), 0);
}

TEST_F(LocalMid, PropertyReplacesTheOneThatIsKnown) {
    ASSERT_TRUE(receiver->Init(&host));
    char mid[] = "SET-BY-HOST";
    ASSERT_TRUE(receiver->SetProperty(PROP_MID, mid, sizeof mid));
    EXPECT_EQ(receiver->GetLocalMid(), "SET-BY-HOST");
}

TEST_F(LocalMid, NonAsciiCharactersComeOutAsUtf8) {
    siblings.machineId = u"gr\u00FC\u00DF-\u4E2D\u6587-\U0001F600";
    const std::string mid = "gr\xC3\xBC\xC3\x9F-\xE4\xB8\xAD\xE6\x96\x87-\xF0\x9F\x98\x80";
    EXPECT_EQ(receiver->GetLocalMid(), mid);
    EXPECT_EQ(Fields().Mid(), mid);
    EXPECT_EQ(TakeRecords(), Texts{Found(mid)});
}

TEST_F(LocalMid, HasNoFormatOfItsOwn) {
    siblings.machineId = u" {any} \"text\"\r\n\t";
    EXPECT_EQ(receiver->GetLocalMid(), " {any} \"text\"\r\n\t");
}

TEST_F(LocalMid, EndsAtTheFirstNulOfTheRecord) {
    siblings.machineId = std::u16string(u"A\0B", 3);
    EXPECT_EQ(receiver->GetLocalMid(), "A");
}

TEST_F(LocalMid, FillsTheRecordToItsEndWithoutANul) {
    siblings.machineId = std::u16string(68, u'M');
    EXPECT_EQ(receiver->GetLocalMid(), std::string(68, 'M'));
    siblings.machineId = std::u16string(67, u'N');
    Fields().Mid().clear();
    EXPECT_EQ(receiver->GetLocalMid(), std::string(67, 'N'));
}

// The service

TEST_F(LocalMid, FailureOfTheServiceIsLoggedAtTraceAndGivesAnEmptyText) {
    for (const int32_t code : {1, -1, static_cast<int32_t>(0x80004005)}) {
        siblings.machineIdResult = code;
        EXPECT_EQ(receiver->GetLocalMid(), "");
        ASSERT_EQ(siblings.Records().size(), 1U) << code;
        EXPECT_EQ(siblings.Records()[0].level, 30) << code;
        EXPECT_EQ(TakeRecords(), Texts{failed}) << code;
        EXPECT_EQ(Fields().Mid(), "");
    }
}

TEST_F(LocalMid, ServiceThatFailsFirstAndSucceedsThenIsNotCreatedTwice) {
    siblings.machineIdResult = 1;
    EXPECT_EQ(receiver->GetLocalMid(), "");
    EXPECT_EQ(siblings.calls.Take(), found);
    EXPECT_EQ(TakeRecords(), Texts{failed});
    EXPECT_TRUE(Fields().HasMidService());
    siblings.machineIdResult = 0;
    EXPECT_EQ(receiver->GetLocalMid(), "SCRIPTED-MACHINE");
    EXPECT_EQ(siblings.calls.Take(), Texts{"IMachineIdService.GetMachineId"}) << "no look-up either";
    EXPECT_EQ(TakeRecords(), Texts{Found("SCRIPTED-MACHINE")});
    EXPECT_EQ(receiver->GetLocalMid(), "SCRIPTED-MACHINE");
    EXPECT_EQ(siblings.calls.Take(), Texts());
}

TEST_F(LocalMid, EmptyTextOfTheServiceIsSilentAndALaterCallAsksAgain) {
    siblings.machineId = u"";
    ExpectSilentFailure(found);
    ExpectSilentFailure({"IMachineIdService.GetMachineId"});
    siblings.machineId = u"LATE";
    EXPECT_EQ(receiver->GetLocalMid(), "LATE");
    EXPECT_EQ(TakeRecords(), Texts{Found("LATE")});
}

TEST_F(LocalMid, ConversionThatGivesNothingIsSilentAndALaterCallAsksAgain) {
    siblings.converterWrites = false;
    ExpectSilentFailure(found);
    siblings.converterWrites = true;
    EXPECT_EQ(receiver->GetLocalMid(), "SCRIPTED-MACHINE");
    EXPECT_EQ(siblings.calls.Take(), Texts{"IMachineIdService.GetMachineId"});
}

// What can be missing. Each is silent, and each later call tries again.

TEST_F(LocalMid, RefusedServiceIsSilentAndIsAskedForAgain) {
    siblings.refused = {"IMachineIdService"};
    const Texts refused{"IModuleFinder.FindModule(module.base)", "refuse IMachineIdService"};
    ExpectSilentFailure(refused);
    ExpectSilentFailure(refused);
    EXPECT_FALSE(Fields().HasMidService());
    siblings.refused.clear();
    EXPECT_EQ(receiver->GetLocalMid(), "SCRIPTED-MACHINE");
    EXPECT_EQ(siblings.calls.Take(), found);
}

TEST_F(LocalMid, ModuleThatCannotBeFoundIsSilentAndIsSoughtAgain) {
    siblings.finder = Finder::GivesNull;
    ExpectSilentFailure({"IModuleFinder.FindModule(module.base)"});
    ExpectSilentFailure({"IModuleFinder.FindModule(module.base)"});
    siblings.finder = Finder::GivesZelkBase;
    EXPECT_EQ(receiver->GetLocalMid(), "SCRIPTED-MACHINE");
}

TEST_F(LocalMid, ModuleWithoutAFactoryIsSilentAndIsSoughtAgain) {
    siblings.finder = Finder::GivesModuleWithoutFactory;
    ExpectSilentFailure({"IModuleFinder.FindModule(module.base)"});
    ExpectSilentFailure({"IModuleFinder.FindModule(module.base)"});
    siblings.finder = Finder::GivesZelkBase;
    EXPECT_EQ(receiver->GetLocalMid(), "SCRIPTED-MACHINE");
}

// A process of its own for each of these, in which no service was bound and no converter was looked for.
class LocalMidFirst : public kit::ReceiverFixture {
protected:
    // Logging without the start that would bind the services.
    void TurnLoggingOn() {
        LoggerObject.Create(kit::ScriptedSiblings::Factory(), SID_LogWriter);
        LogFileEnabled = true;
    }

    void ExpectSilentFailure() {
        EXPECT_EQ(receiver->GetLocalMid(), "");
        EXPECT_EQ(TakeRecords(), Texts());
        EXPECT_EQ(Fields().Mid(), "");
    }

    void ExpectSuccess() {
        EXPECT_EQ(receiver->GetLocalMid(), "SCRIPTED-MACHINE");
        EXPECT_EQ(TakeRecords(), Texts{Trace("localMid.cpp CMordRecv::GetLocalMid",
                                             "GetLocalMid()-Get local mid is:SCRIPTED-MACHINE")});
    }
};

TEST_F(LocalMidFirst, MissingFinderGivesAnEmptyTextAndIsSoughtAgain) {
    TurnLoggingOn();
    siblings.refused = {"IModuleFinder"};
    ExpectSilentFailure();
    ExpectSilentFailure();
    EXPECT_FALSE(Fields().HasMidService());
    siblings.refused.clear();
    ExpectSuccess();
}

TEST_F(LocalMidFirst, MissingLibraryGivesAnEmptyTextAndIsFoundWhenItIsLoadedLate) {
    TurnLoggingOn();
    siblings.UnloadZelkBase();
    ExpectSilentFailure();
    siblings.LoadZelkBase();
    ExpectSuccess();
}

TEST_F(LocalMidFirst, IsLostWithoutAConverterAndTheServiceIsAskedEachTime) {
    siblings.refused = {"ITextConverter"};
    EXPECT_EQ(receiver->GetLocalMid(), "");
    EXPECT_EQ(Fields().Mid(), "");
    EXPECT_TRUE(Fields().HasMidService());
    siblings.refused.clear();
    siblings.calls.Take();
    EXPECT_EQ(receiver->GetLocalMid(), "");
    EXPECT_EQ(siblings.calls.Take(), Texts{"IMachineIdService.GetMachineId"});
}

} // namespace
