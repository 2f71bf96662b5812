// The states of the object, what works in each, and the ways between them.
#include "unit/mordRev/lifecycleEvent.h"

namespace {

using Texts = std::vector<std::string>;
using kit::Error;
using kit::Trace;

class LifecycleStates : public LifecycleEventFixture {
protected:
    enum class State { Created, Ready, Running, Released, Other };

    State Now() {
        const MordRevFields fields = Fields();
        if (fields.Inited()) {
            return fields.Host() == nullptr ? State::Other : fields.Started() ? State::Running : State::Ready;
        }
        return fields.Host() == nullptr ? State::Created : State::Released;
    }

    const std::string notStarted = Error("eventMatch.cpp CMordRecv::HandleEventInner", "receving end not start");
};

// Created

TEST_F(LifecycleStates, CreatedTakesAllButPropertiesAndEvents) {
    EXPECT_EQ(Now(), State::Created);
    EXPECT_TRUE(receiver->SetAllowList(R"({"mid_list":[{"mid":"A","protocol":["tcp"]}]})"));
    EXPECT_EQ(Fields().AllowedMids(), (AllowTable{{"tcp", {"A"}}}));
    EXPECT_TRUE(receiver->ClearAllowList());
    EXPECT_EQ(Fields().AllowedMids(), AllowTable());
    EXPECT_TRUE(receiver->SetReportSink(&sink));
    EXPECT_TRUE(receiver->Start());
    EXPECT_FALSE(receiver->Stop());
    EXPECT_TRUE(receiver->Uninit());
    EXPECT_TRUE(receiver->GetProperty(8, 0, 0));
    EXPECT_EQ(Now(), State::Created);
}

TEST_F(LifecycleStates, CreatedRefusesEventsWithAParameterErrorAndLeavesTheReply) {
    siblings.WriteIni("[OUTLOG]\r\nWriteLog=1\r\n");
    ASSERT_FALSE(receiver->Init(nullptr)); // the log is up
    receiver->Start();
    receiver->SetReportSink(&sink);
    TakeRecords();
    EXPECT_EQ(Handle(), 77U);
    EXPECT_FALSE(result);
    EXPECT_EQ(TakeRecords(), (Texts{Trace("eventEntry.cpp CMordRecv::HandleEvent", "==>enter"),
                                    Error("eventEntry.cpp CMordRecv::HandleEvent", "param error")}));
    EXPECT_EQ(calls.Take(), Texts());
}

TEST_F(LifecycleStates, CreatedRefusesPropertiesWithTheirParameterError) {
    siblings.WriteIni("[OUTLOG]\r\nWriteLog=1\r\n");
    ASSERT_FALSE(receiver->Init(nullptr));
    TakeRecords();
    uint32_t mode = MODE_EMERGENCY;
    EXPECT_FALSE(receiver->SetProperty(PROP_DEFENDER_MODE, &mode, sizeof mode));
    EXPECT_EQ(TakeRecords(), Texts{parameterError});
}

// Ready

TEST_F(LifecycleStates, ReadyHandlesEventsButEveryRuleMeetsTheClosedGate) {
    MakeReady();
    EXPECT_EQ(Now(), State::Ready);
    AllowTheMachine();
    TakeRecords();
    kit::FakeRecord second = kit::MakeRule("G2", "udp");
    IEventRecord* rules[] = {&rule, &second, &rule};
    uint32_t reply = 77;
    EXPECT_FALSE(receiver->HandleEvent(&event, rules, 3, &reply));
    EXPECT_EQ(reply, REPLY_BLOCK);
    EXPECT_EQ(TakeErrors(), Texts(3, notStarted));
    EXPECT_EQ(TakeCallNames(), (Texts{"QueryDot", "FreeResult", "Report"}));
}

TEST_F(LifecycleStates, ReadyStillGivesTheModeTheLastWord) {
    MakeReady();
    SetMode(MODE_ALLOW_AFTER_DECISION);
    EXPECT_EQ(Handle(), REPLY_ALLOW);
    EXPECT_EQ(TakeErrors(), Texts{notStarted});
}

// Running

TEST_F(LifecycleStates, RunningMatchesRules) {
    MakeRunning();
    EXPECT_EQ(Now(), State::Running);
    AllowTheMachine();
    EXPECT_EQ(Handle(), REPLY_ALLOW);
    EXPECT_TRUE(result);
    EXPECT_EQ(TakeCallNames(), (Texts{"QueryDot", "FreeResult", "DeleteDot", "Report"}));
    EXPECT_EQ(TakeErrors(), Texts());
}

// Released

TEST_F(LifecycleStates, ReleasedWorksAsBefore) {
    MakeRunning();
    AllowTheMachine();
    receiver->Uninit();
    EXPECT_EQ(Now(), State::Released);
    EXPECT_EQ(Handle(), REPLY_ALLOW);
    EXPECT_EQ(TakeCallNames(), (Texts{"QueryDot", "FreeResult", "DeleteDot", "Report"}));
    SetMode(MODE_EMERGENCY);
    EXPECT_EQ(Handle(), REPLY_ALLOW);
    EXPECT_EQ(TakeCallNames(), Texts());
    EXPECT_EQ(TakeErrors(), Texts());
}

TEST_F(LifecycleStates, ReleasedWithoutStartMeetsTheClosedGate) {
    MakeReady();
    AllowTheMachine();
    receiver->Uninit();
    EXPECT_EQ(Handle(), REPLY_BLOCK);
    EXPECT_EQ(TakeErrors(), Texts{notStarted});
}

// The ways between

TEST_F(LifecycleStates, CreatedBecomesReadyByInit) {
    EXPECT_TRUE(receiver->Init(&host));
    EXPECT_EQ(Now(), State::Ready);
}

TEST_F(LifecycleStates, CreatedStaysCreatedByAnInitThatFails) {
    EXPECT_FALSE(receiver->Init(nullptr));
    EXPECT_EQ(Now(), State::Created);
    siblings.refused = {"ILogConfig"};
    EXPECT_FALSE(receiver->Init(&host));
    EXPECT_EQ(Now(), State::Created);
}

TEST_F(LifecycleStates, CreatedThatWasStartedBecomesRunningByInit) {
    receiver->Start();
    EXPECT_EQ(Now(), State::Created);
    EXPECT_TRUE(Fields().Started());
    EXPECT_TRUE(receiver->Init(&host));
    EXPECT_EQ(Now(), State::Running);
    AllowTheMachine();
    EXPECT_EQ(Handle(), REPLY_ALLOW);
}

TEST_F(LifecycleStates, ReadyBecomesRunningByStartAndReadyAgainByStop) {
    MakeReady();
    AllowTheMachine();
    receiver->Start();
    EXPECT_EQ(Now(), State::Running);
    EXPECT_EQ(Handle(), REPLY_ALLOW);
    receiver->Stop();
    EXPECT_EQ(Now(), State::Ready);
    EXPECT_EQ(Handle(), REPLY_BLOCK);
}

TEST_F(LifecycleStates, ReadyAndRunningBecomeReleasedByUninit) {
    MakeReady();
    receiver->Uninit();
    EXPECT_EQ(Now(), State::Released);
    receiver->Init(&host);
    receiver->Start();
    EXPECT_EQ(Now(), State::Running);
    receiver->Uninit();
    EXPECT_EQ(Now(), State::Released);
}

TEST_F(LifecycleStates, ReleasedBecomesReadyOrRunningByInitAsItWasStarted) {
    MakeReady();
    receiver->Uninit();
    EXPECT_TRUE(receiver->Init(&host));
    EXPECT_EQ(Now(), State::Ready);
    receiver->Start();
    receiver->Uninit();
    EXPECT_TRUE(receiver->Init(&host));
    EXPECT_EQ(Now(), State::Running);
    receiver->Uninit();
    receiver->Stop();
    EXPECT_TRUE(receiver->Init(&host));
    EXPECT_EQ(Now(), State::Ready);
}

TEST_F(LifecycleStates, ReleasedStaysReleasedByAnInitThatFails) {
    MakeRunning();
    receiver->Uninit();
    EXPECT_FALSE(receiver->Init(nullptr));
    EXPECT_EQ(Now(), State::Released);
    EXPECT_EQ(Handle(), REPLY_BLOCK);
    EXPECT_EQ(TakeCallNames(), (Texts{"QueryDot", "FreeResult", "Report"}));
}

TEST_F(LifecycleStates, AfterAnotherInitEventsGoToTheNewHost) {
    MakeRunning();
    receiver->Uninit();
    kit::CallLog otherCalls;
    kit::RecordingHost other(otherCalls);
    receiver->Init(&other);
    Handle();
    EXPECT_EQ(TakeCallNames(), Texts{"Report"});
    EXPECT_EQ(otherCalls.Take().size(), 2U) << "the query, and the null answer given back";
}

// Defaults and values without behaviour, as events show them

TEST_F(LifecycleStates, FreshObjectDecidesByTheActionTableAndBlocksOnANetworkError) {
    MakeReady();
    host.queryCode = 1007;
    EXPECT_EQ(Handle(), REPLY_BLOCK) << "exception mode 2";
    EXPECT_TRUE(result);
    ASSERT_TRUE(SetAction(R"({"tcp":1})"));
    EXPECT_EQ(Handle(), REPLY_ALLOW) << "defender mode 3";
}

TEST_F(LifecycleStates, ModeWithoutBehaviourOfItsOwnLeavesTheDecisionAsItFell) {
    MakeRunning();
    ASSERT_TRUE(SetAction(R"({"tcp":1})"));
    for (const uint32_t mode : {0U, 2U, 77U}) {
        receiver->ClearAllowList();
        SetMode(mode);
        calls.Take();
        EXPECT_EQ(Handle(), REPLY_BLOCK) << mode << ": no action table, no forced allow";
        EXPECT_EQ(TakeCallNames(), (Texts{"QueryDot", "FreeResult", "Report"})) << mode;
        AllowTheMachine();
        EXPECT_EQ(Handle(), REPLY_ALLOW) << mode << ": not forbidden either";
        EXPECT_EQ(TakeCallNames(), (Texts{"QueryDot", "FreeResult", "DeleteDot", "Report"})) << mode;
    }
}

TEST_F(LifecycleStates, NullReportSinkEndsTheReports) {
    MakeRunning();
    Handle();
    EXPECT_EQ(sink.Reports().size(), 1U);
    receiver->SetReportSink(nullptr);
    Handle();
    EXPECT_EQ(sink.Reports().size(), 1U);
    kit::RecordingSink other(calls);
    receiver->SetReportSink(&other);
    Handle();
    EXPECT_EQ(sink.Reports().size(), 1U);
    EXPECT_EQ(other.Reports().size(), 1U);
}

} // namespace
