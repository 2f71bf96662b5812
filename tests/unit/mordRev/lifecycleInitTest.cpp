// Init, in all its ways.
#include "kit/host/receiverFixture.h"

namespace {

using Texts = std::vector<std::string>;
using kit::Trace;

class LifecycleInit : public kit::ReceiverFixture {
protected:
    void SetUp() override {
        ReceiverFixture::SetUp();
        siblings.WriteIni("[OUTLOG]\r\nWriteLog=1\r\n");
    }

    // How often a call stands in the siblings' log since the last time it was taken.
    static std::ptrdiff_t Count(const Texts& siblingCalls, const std::string& call) {
        return std::count(siblingCalls.begin(), siblingCalls.end(), call);
    }

    const std::string ready = Trace("mordRev.cpp CMordRecv::InitLogMoudle", "logger is ready");
    const std::string midFound =
        Trace("localMid.cpp CMordRecv::GetLocalMid", "GetLocalMid()-Get local mid is:SCRIPTED-MACHINE");
    const std::string midKept = Trace("mordRev.cpp CMordRecv::Init", "init get mid=SCRIPTED-MACHINE");
};

TEST_F(LifecycleInit, StartsLoggingGetsTheMachineIdAndReturnsTrue) {
    EXPECT_TRUE(receiver->Init(&host));
    EXPECT_TRUE(Fields().Inited());
    EXPECT_EQ(Fields().Host(), &host);
    EXPECT_EQ(Fields().Mid(), "SCRIPTED-MACHINE");
    EXPECT_FALSE(Fields().Started());
    EXPECT_EQ(TakeRecords(), (Texts{ready, midFound, midKept}));
    EXPECT_EQ(calls.Take(), Texts()) << "the host is not called";
}

TEST_F(LifecycleInit, LogsAtTrace) {
    receiver->Init(&host);
    for (const auto& record : siblings.Records()) {
        EXPECT_EQ(record.level, 30);
    }
}

TEST_F(LifecycleInit, SecondOneKeepsTheFirstHostAndReturnsTrue) {
    MakeReady();
    kit::RecordingHost other(calls);
    EXPECT_TRUE(receiver->Init(&other));
    EXPECT_EQ(Fields().Host(), &host);
    EXPECT_TRUE(Fields().Inited());
    EXPECT_EQ(TakeRecords(), Texts());
    EXPECT_EQ(siblings.calls.Take(), Texts()) << "nothing is run again";
}

TEST_F(LifecycleInit, SecondOneReturnsTrueForANullHostToo) {
    MakeReady();
    EXPECT_TRUE(receiver->Init(nullptr));
    EXPECT_EQ(Fields().Host(), &host);
    EXPECT_EQ(TakeRecords(), Texts());
}

TEST_F(LifecycleInit, NullHostReturnsFalseButTheLogIsUp) {
    EXPECT_FALSE(receiver->Init(nullptr));
    EXPECT_FALSE(Fields().Inited());
    EXPECT_EQ(Fields().Host(), nullptr);
    EXPECT_EQ(Fields().Mid(), "");
    EXPECT_FALSE(Fields().HasMidService());
    EXPECT_TRUE(LogFileEnabled);
    EXPECT_EQ(TakeRecords(), Texts{ready});
    const Texts siblingCalls = siblings.calls.Take();
    EXPECT_EQ(Count(siblingCalls, "ILogWriter.Start(MORD_Recv,0)"), 1);
    EXPECT_EQ(Count(siblingCalls, "create IMachineIdService"), 0) << "the machine id is not asked for";
    EXPECT_TRUE(receiver->Init(&host)) << "and a host may come later";
}

TEST_F(LifecycleInit, NullHostAfterUninitReturnsFalseAndLeavesTheFormerHost) {
    MakeReady();
    receiver->Uninit();
    EXPECT_FALSE(receiver->Init(nullptr));
    EXPECT_FALSE(Fields().Inited());
    EXPECT_EQ(Fields().Host(), &host);
    EXPECT_EQ(Fields().Mid(), "SCRIPTED-MACHINE");
}

TEST_F(LifecycleInit, ReturnsFalseAndChangesNothingWhenTheLogCannotStart) {
    siblings.refused = {"ILogConfig"};
    EXPECT_FALSE(receiver->Init(&host));
    EXPECT_FALSE(Fields().Inited());
    EXPECT_EQ(Fields().Host(), nullptr);
    EXPECT_EQ(Fields().Mid(), "");
    EXPECT_FALSE(Fields().HasMidService());
    EXPECT_EQ(TakeRecords(), Texts());
    EXPECT_EQ(Count(siblings.calls.Take(), "create IMachineIdService"), 0);
    siblings.refused.clear();
    EXPECT_TRUE(receiver->Init(&host)) << "a later call may succeed";
}

TEST_F(LifecycleInit, ReturnsFalseWhenTheLoggerCannotBeMade) {
    siblings.refused = {"ILogWriter"};
    EXPECT_FALSE(receiver->Init(&host));
    EXPECT_FALSE(Fields().Inited());
    EXPECT_EQ(Fields().Host(), nullptr);
}

TEST_F(LifecycleInit, ReturnsFalseWithoutTheBaseLibraryAndTrueOnceItIsLoaded) {
    siblings.UnloadZelkBase();
    EXPECT_FALSE(receiver->Init(&host));
    EXPECT_EQ(Fields().Host(), nullptr);
    siblings.LoadZelkBaseWithoutFactory();
    EXPECT_FALSE(receiver->Init(&host));
    EXPECT_EQ(Fields().Host(), nullptr);
    siblings.LoadZelkBase();
    EXPECT_TRUE(receiver->Init(&host));
    EXPECT_EQ(Fields().Host(), &host);
    EXPECT_EQ(TakeRecords(), (Texts{ready, midFound, midKept}));
}

TEST_F(LifecycleInit, FailureAfterUninitLeavesTheFormerHostAndMachineId) {
    MakeReady();
    receiver->Uninit();
    siblings.finder = kit::ScriptedSiblings::Finder::GivesNull;
    kit::RecordingHost other(calls);
    EXPECT_FALSE(receiver->Init(&other));
    EXPECT_FALSE(Fields().Inited());
    EXPECT_EQ(Fields().Host(), &host);
    EXPECT_EQ(Fields().Mid(), "SCRIPTED-MACHINE");
}

TEST_F(LifecycleInit, NeedsNoFerrocore) {
    siblings.UnloadFerrocore();
    EXPECT_TRUE(receiver->Init(&host));
    EXPECT_EQ(Fields().Mid(), "SCRIPTED-MACHINE");
}

TEST_F(LifecycleInit, EmptyMachineIdIsNoFailure) {
    siblings.machineIdResult = 5;
    EXPECT_TRUE(receiver->Init(&host));
    EXPECT_TRUE(Fields().Inited());
    EXPECT_EQ(Fields().Mid(), "");
    EXPECT_EQ(TakeRecords(), (Texts{ready, Trace("localMid.cpp CMordRecv::GetLocalMid", "Get local mid failed!"),
                                    Trace("mordRev.cpp CMordRecv::Init", "init get mid=")}));
}

TEST_F(LifecycleInit, NoMachineIdServiceIsNoFailure) {
    siblings.refused = {"IMachineIdService"};
    EXPECT_TRUE(receiver->Init(&host));
    EXPECT_EQ(Fields().Mid(), "");
    EXPECT_EQ(TakeRecords(), (Texts{ready, Trace("mordRev.cpp CMordRecv::Init", "init get mid=")}));
}

TEST_F(LifecycleInit, LogsNothingWhenLoggingIsOff) {
    siblings.RemoveIni();
    EXPECT_TRUE(receiver->Init(&host));
    EXPECT_EQ(TakeRecords(), Texts());
    EXPECT_EQ(Fields().Mid(), "SCRIPTED-MACHINE") << "the rest is done all the same";
    EXPECT_EQ(Count(siblings.calls.Take(), "create ILogWriter"), 0);
}

TEST_F(LifecycleInit, AfterUninitStartsLoggingAndGetsTheMachineIdAgain) {
    siblings.machineIdResult = 5;
    MakeReady();
    receiver->Uninit();
    siblings.machineIdResult = 0;
    EXPECT_TRUE(receiver->Init(&host));
    EXPECT_TRUE(Fields().Inited());
    EXPECT_EQ(Fields().Mid(), "SCRIPTED-MACHINE");
    EXPECT_EQ(TakeRecords(), (Texts{ready, midFound, midKept}));
    EXPECT_EQ(siblings.calls.Take(),
              (Texts{"IModuleFinder.FindModule(module.base)", "create ILogConfig",
                     "ILogConfig.GetConfigText(2097154,0)", "ILogConfig.GetConfigText(2097154,0)", "ILogWriter.Release",
                     "create ILogWriter", "ILogWriter.SetLevel(0)", "ILogWriter.Start(MORD_Recv,0)",
                     "ILogConfig.Release", "IMachineIdService.GetMachineId"}));
}

TEST_F(LifecycleInit, AfterUninitReplacesTheHostAndKeepsTheMachineIdThatIsKnown) {
    MakeReady();
    receiver->Uninit();
    kit::RecordingHost other(calls);
    siblings.machineId = u"ANOTHER-MACHINE";
    EXPECT_TRUE(receiver->Init(&other));
    EXPECT_EQ(Fields().Host(), &other);
    EXPECT_EQ(Fields().Mid(), "SCRIPTED-MACHINE");
    EXPECT_EQ(TakeRecords(), (Texts{ready, midKept})) << "the service is not asked again";
}

TEST_F(LifecycleInit, AfterUninitFollowsAChangedIniFile) {
    MakeReady();
    receiver->Uninit();
    siblings.WriteIni("[OUTLOG]\r\nWriteLog=0\r\n");
    EXPECT_TRUE(receiver->Init(&host));
    EXPECT_TRUE(LogFileEnabled) << "never cleared";
    EXPECT_EQ(TakeRecords(), (Texts{ready, midKept})) << "the former logger goes on";
    EXPECT_EQ(Count(siblings.calls.Take(), "ILogWriter.Release"), 0);
    receiver->Uninit();
    siblings.WriteIni("[OUTLOG]\r\nWriteLog=1\r\n");
    EXPECT_TRUE(receiver->Init(&host));
    const Texts siblingCalls = siblings.calls.Take();
    const auto released = std::find(siblingCalls.begin(), siblingCalls.end(), "ILogWriter.Release");
    ASSERT_NE(released, siblingCalls.end());
    EXPECT_EQ(*(released + 1), "create ILogWriter");
}

} // namespace
