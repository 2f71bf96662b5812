// What HandleEvent refuses, and what it leaves alone then.
#include "unit/mordRev/decisionFixture.h"

using namespace kit;

namespace {

class EntryParameter : public DecisionFixture {
protected:
    void SetUp() override {
        DecisionFixture::SetUp();
        AddRule("GUID-1", "TYPE-1");
    }

    Lines ParamErrorRecords() const { return {inHandleEvent.Trace("==>enter"), inHandleEvent.Error("param error")}; }
};

TEST_F(EntryParameter, NullReplyLogsParamErrorReturnsFalseAndTouchesNothing) {
    WatchReads();
    AddRule("GUID-2", "TYPE-2");
    EXPECT_FALSE(receiver->HandleEvent(&event, &rulePointers[1], 1, nullptr));
    EXPECT_EQ(TakeRecords(), ParamErrorRecords());
    EXPECT_EQ(TakeCalls(), Lines{});
}

TEST_F(EntryParameter, WithoutAHostLogsParamErrorReturnsFalseAndLeavesTheReplyAlone) {
    Fields().Host() = nullptr;
    EXPECT_EQ(Decide(), (Verdict{false, unwritten}));
    EXPECT_EQ(TakeRecords(), ParamErrorRecords());
    EXPECT_EQ(TakeCalls(), Lines{});
}

TEST_F(EntryParameter, BeforeInitIsWithoutAHost) {
    CMordRecv fresh;
    uint32_t reply = unwritten;
    EXPECT_FALSE(fresh.HandleEvent(&event, rulePointers.data(), 1, &reply));
    EXPECT_EQ(reply, unwritten);
    EXPECT_EQ(TakeRecords(), ParamErrorRecords());
}

TEST_F(EntryParameter, AfterUninitEventsAreDecidedAsBefore) {
    ASSERT_TRUE(receiver->Uninit());
    host.answer = AnswerText("GUID-1", {"MID-1"});
    Allow("MID-1", {"TYPE-1"});
    EXPECT_EQ(Decide(), (Verdict{true, REPLY_ALLOW}));
}

TEST_F(EntryParameter, NullReplyCountsBeforeEverythingElse) {
    EXPECT_FALSE(receiver->HandleEvent(nullptr, nullptr, 0, nullptr));
    EXPECT_EQ(TakeRecords(), ParamErrorRecords());
}

TEST_F(EntryParameter, NullEventGivesReply0FalseAndNoReport) {
    uint32_t reply = unwritten;
    EXPECT_FALSE(receiver->HandleEvent(nullptr, rulePointers.data(), 1, &reply));
    EXPECT_EQ(reply, 0U);
    EXPECT_EQ(TakeRecords(), ParamErrorRecords());
    EXPECT_EQ(TakeCalls(), Lines{});
}

TEST_F(EntryParameter, NullRulesGiveReply0FalseAndNoReport) {
    uint32_t reply = unwritten;
    EXPECT_FALSE(receiver->HandleEvent(&event, nullptr, 1, &reply));
    EXPECT_EQ(reply, 0U);
    EXPECT_EQ(TakeRecords(), ParamErrorRecords());
    EXPECT_EQ(TakeCalls(), Lines{});
}

TEST_F(EntryParameter, RuleCount0GivesReply0FalseAndNoReport) {
    WatchReads();
    uint32_t reply = unwritten;
    EXPECT_FALSE(receiver->HandleEvent(&event, rulePointers.data(), 0, &reply));
    EXPECT_EQ(reply, 0U);
    EXPECT_EQ(TakeRecords(), ParamErrorRecords());
    EXPECT_EQ(TakeCalls(), Lines{});
}

TEST_F(EntryParameter, ModiyReplyHasNoSayInAParameterError) {
    event.Int32("flags", 0x10);
    for (const uint32_t mode : {MODE_ALLOW_AFTER_DECISION, MODE_EMERGENCY, MODE_ACTION_TABLE}) {
        SetMode(mode);
        uint32_t reply = unwritten;
        EXPECT_FALSE(receiver->HandleEvent(&event, nullptr, 1, &reply));
        EXPECT_EQ(reply, 0U);
        EXPECT_EQ(TakeRecords(), ParamErrorRecords());
        EXPECT_EQ(TakeCalls(), Lines{});
    }
}

TEST_F(EntryParameter, AMissingSinkIsNoErrorOfTheEntry) {
    receiver->SetReportSink(nullptr);
    host.answer = "{}";
    EXPECT_EQ(Decide(), (Verdict{false, REPLY_BLOCK}));
    EXPECT_EQ(TakeRecords(), (Lines{inHandleEvent.Trace("==>enter"), inHandleEvent.Trace("query dot result_json={}"),
                                    inHandleEventInner.Trace("query dot result is empty, reply=0,rule guidGUID-1"),
                                    inReport.Trace("==>enter"), inReport.Error("param error")}));
    EXPECT_EQ(TakeCalls(), (Lines{QueryCall({"GUID-1"}, "LOCAL-MID"), "FreeResult(answer 1)"}));
}

} // namespace
