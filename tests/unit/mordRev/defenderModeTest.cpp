// What each defender mode makes of a network error, a query error and an answered query; and what the flags add.
#include "unit/mordRev/decisionFixture.h"

using namespace kit;

namespace {

// Two rules; "MID-1" is allowed under "TYPE-1" and the action table lets "TYPE-1" through.
class DefenderModes : public DecisionFixture {
protected:
    void SetUp() override {
        DecisionFixture::SetUp();
        AddRule("GUID-1", "TYPE-1");
        AddRule("GUID-2", "TYPE-2");
        Allow("MID-1", {"TYPE-1"});
        SetActions(R"({"TYPE-1":1})");
    }

public:
    // What the host gives to the next query.
    void NetworkError(uint32_t exceptionMode) {
        SetExceptionMode(exceptionMode);
        host.queryCode = DOT_QUERY_NETWORK_ERROR;
        host.answer.reset();
    }
    void QueryError() {
        host.queryCode = 1;
        host.answer.reset();
    }
    void AnswerThatMatches() { Answer(AnswerText("GUID-1", {"MID-1"})); }
    void AnswerWithoutMatch() { Answer(AnswerText("GUID-1", {"MID-2"})); }
    void AnswerThatIsNoJson() { Answer("no json"); }

protected:
    // Whether the report of the last event says "block_modified" true.
    bool ReportedAsModified() const {
        EXPECT_FALSE(sink.Reports().empty());
        return sink.Reports().back().find("\"block_modified\": true") != std::string::npos;
    }

private:
    void Answer(std::string text) {
        host.queryCode = DOT_QUERY_ANSWERED;
        host.answer = std::move(text);
    }
};

TEST_F(DefenderModes, AllForbidLeavesANetworkErrorToTheExceptionMode) {
    SetMode(MODE_ALL_FORBID);
    NetworkError(EXCEPTION_ALLOW);
    EXPECT_EQ(Decide(), (Verdict{true, REPLY_ALLOW}));
    NetworkError(EXCEPTION_BLOCK);
    EXPECT_EQ(Decide(), (Verdict{true, REPLY_BLOCK}));
}

TEST_F(DefenderModes, AllForbidBlocksAQueryError) {
    SetMode(MODE_ALL_FORBID);
    QueryError();
    EXPECT_EQ(Decide(), (Verdict{false, REPLY_BLOCK}));
    EXPECT_FALSE(ReportedAsModified());
}

TEST_F(DefenderModes, AllForbidBlocksAnAnsweredQueryWithoutParsing) {
    SetMode(MODE_ALL_FORBID);
    AnswerThatMatches();
    EXPECT_EQ(Decide(), (Verdict{true, REPLY_BLOCK}));
    AnswerThatIsNoJson();
    EXPECT_EQ(Decide(), (Verdict{true, REPLY_BLOCK}));
    EXPECT_FALSE(ReportedAsModified());
}

TEST_F(DefenderModes, AllForbidAllowsADisconnectEvent) {
    SetMode(MODE_ALL_FORBID);
    event.Int32("flags", EVENT_FLAG_DISCONNECT);
    EXPECT_EQ(Decide(), (Verdict{true, REPLY_ALLOW}));
    EXPECT_EQ(TakeCalls(), Lines{});
}

TEST_F(DefenderModes, ActionTableIsTheModeOfAFreshObject) {
    CMordRecv fresh;
    EXPECT_EQ(MordRevFields(fresh).Mode(), MODE_ACTION_TABLE);
    EXPECT_EQ(MordRevFields(fresh).ExceptionMode(), EXCEPTION_BLOCK);
}

TEST_F(DefenderModes, ActionTableTurnsTheBlockOfANetworkErrorIntoAnAllow) {
    NetworkError(EXCEPTION_BLOCK);
    EXPECT_EQ(Decide(), (Verdict{true, REPLY_ALLOW}));
    EXPECT_TRUE(ReportedAsModified());
    NetworkError(EXCEPTION_ALLOW);
    EXPECT_EQ(Decide(), (Verdict{true, REPLY_ALLOW}));
    EXPECT_FALSE(ReportedAsModified());
}

TEST_F(DefenderModes, ActionTableTurnsTheBlockOfAQueryErrorIntoAnAllow) {
    QueryError();
    EXPECT_EQ(Decide(), (Verdict{false, REPLY_ALLOW}));
    EXPECT_TRUE(ReportedAsModified());
    AnswerThatIsNoJson();
    EXPECT_EQ(Decide(), (Verdict{false, REPLY_ALLOW}));
    EXPECT_TRUE(ReportedAsModified());
}

TEST_F(DefenderModes, ActionTableTurnsTheBlockOfTheRulesIntoAnAllow) {
    AnswerWithoutMatch();
    EXPECT_EQ(Decide(), (Verdict{false, REPLY_ALLOW}));
    EXPECT_TRUE(ReportedAsModified());
    AnswerThatMatches();
    EXPECT_EQ(Decide(), (Verdict{true, REPLY_ALLOW}));
    EXPECT_FALSE(ReportedAsModified());
}

TEST_F(DefenderModes, ActionTableLeavesTheDecisionWhereTheTypeHasNoRowOrAFalseOne) {
    for (const char* const document : {R"({"TYPE-2":1})", R"({"TYPE-1":0})"}) {
        SetActions(document);
        NetworkError(EXCEPTION_BLOCK);
        EXPECT_EQ(Decide(), (Verdict{true, REPLY_BLOCK}));
        QueryError();
        EXPECT_EQ(Decide(), (Verdict{false, REPLY_BLOCK}));
        AnswerWithoutMatch();
        EXPECT_EQ(Decide(), (Verdict{false, REPLY_BLOCK}));
        AnswerThatMatches();
        EXPECT_EQ(Decide(), (Verdict{true, REPLY_ALLOW}));
        EXPECT_FALSE(ReportedAsModified());
    }
}

TEST_F(DefenderModes, AllowAfterDecisionAllowsANetworkErrorInTheEnd) {
    SetMode(MODE_ALLOW_AFTER_DECISION);
    NetworkError(EXCEPTION_BLOCK);
    EXPECT_EQ(Decide(), (Verdict{true, REPLY_ALLOW}));
    EXPECT_TRUE(ReportedAsModified());
    NetworkError(EXCEPTION_ALLOW);
    EXPECT_EQ(Decide(), (Verdict{true, REPLY_ALLOW}));
    EXPECT_FALSE(ReportedAsModified());
}

TEST_F(DefenderModes, AllowAfterDecisionAllowsAQueryErrorInTheEnd) {
    SetMode(MODE_ALLOW_AFTER_DECISION);
    QueryError();
    EXPECT_EQ(Decide(), (Verdict{false, REPLY_ALLOW}));
    EXPECT_TRUE(ReportedAsModified());
    AnswerThatIsNoJson();
    EXPECT_EQ(Decide(), (Verdict{false, REPLY_ALLOW}));
    EXPECT_TRUE(ReportedAsModified());
}

TEST_F(DefenderModes, AllowAfterDecisionStillDeletesTheDotOfARuleThatMatched) {
    SetMode(MODE_ALLOW_AFTER_DECISION);
    AnswerThatMatches();
    EXPECT_EQ(Decide(), (Verdict{true, REPLY_ALLOW}));
    EXPECT_EQ(TakeCalls(), (Lines{QueryCall({"GUID-1", "GUID-2"}, "LOCAL-MID"), "FreeResult(answer 1)",
                                  DeleteCall("GUID-1", "LOCAL-MID", "TYPE-1"),
                                  ReportCall({.guids = {"GUID-1"}, .type = "TYPE-1", .block = false})}));
    AnswerWithoutMatch();
    EXPECT_EQ(Decide(), (Verdict{false, REPLY_ALLOW}));
    EXPECT_EQ(
        TakeCalls(),
        (Lines{QueryCall({"GUID-1", "GUID-2"}, "LOCAL-MID"), "FreeResult(answer 2)",
               ReportCall({.guids = {"GUID-1", "GUID-2"}, .type = "TYPE-1", .block = false, .blockModified = true})}));
}

TEST_F(DefenderModes, AllowAfterDecisionLogsTheModeBetweenDecisionAndReport) {
    SetMode(MODE_ALLOW_AFTER_DECISION);
    QueryError();
    Decide();
    EXPECT_EQ(TakeRecords(),
              Joined({{inHandleEvent.Trace("==>enter"), inHandleEvent.Trace("query dot result_json="),
                       inHandleEvent.Trace(" query dot error, reply=0"), inModiyReply.Trace("defender mode=4")},
                      ReportRecords(
                          {.guids = {"GUID-1", "GUID-2"}, .type = "TYPE-1", .block = false, .blockModified = true})}));
}

TEST_F(DefenderModes, EmergencyMakesNoQueryWhateverTheHostWouldAnswer) {
    SetMode(MODE_EMERGENCY);
    for (const auto prepare : {&DefenderModes::QueryError, &DefenderModes::AnswerThatMatches,
                               &DefenderModes::AnswerWithoutMatch, &DefenderModes::AnswerThatIsNoJson}) {
        (this->*prepare)();
        EXPECT_EQ(Decide(), (Verdict{true, REPLY_ALLOW}));
        EXPECT_EQ(TakeCalls(), Lines{});
    }
    NetworkError(EXCEPTION_BLOCK);
    EXPECT_EQ(Decide(), (Verdict{true, REPLY_ALLOW}));
    EXPECT_EQ(TakeCalls(), Lines{});
}

TEST_F(DefenderModes, OtherValuesLeaveTheDecisionAsItFell) {
    for (const uint32_t mode : {0U, 2U, 6U, 77U, 0x80000003U, 0xFFFFFFFFU}) {
        SetMode(mode);
        NetworkError(EXCEPTION_ALLOW);
        EXPECT_EQ(Decide(), (Verdict{true, REPLY_ALLOW}));
        NetworkError(EXCEPTION_BLOCK);
        EXPECT_EQ(Decide(), (Verdict{true, REPLY_BLOCK}));
        QueryError();
        EXPECT_EQ(Decide(), (Verdict{false, REPLY_BLOCK}));
        AnswerThatIsNoJson();
        EXPECT_EQ(Decide(), (Verdict{false, REPLY_BLOCK}));
        AnswerWithoutMatch();
        EXPECT_EQ(Decide(), (Verdict{false, REPLY_BLOCK}));
        EXPECT_FALSE(ReportedAsModified());
        AnswerThatMatches();
        EXPECT_EQ(Decide(), (Verdict{true, REPLY_ALLOW}));
    }
}

// Every final 1 becomes 2 and nothing else does, in every mode.
TEST_F(DefenderModes, Flag0x10TurnsAFinalReplyOf1Into2InEveryMode) {
    for (const uint32_t mode : {0U, 1U, 2U, 3U, 4U, 5U, 77U}) {
        for (const auto prepare : {&DefenderModes::QueryError, &DefenderModes::AnswerThatMatches,
                                   &DefenderModes::AnswerWithoutMatch, &DefenderModes::AnswerThatIsNoJson}) {
            SetMode(mode);
            (this->*prepare)();
            event.Int32("flags", 0);
            const Verdict plain = Decide();
            event.Int32("flags", EVENT_FLAG_REPLY_TWO);
            const Verdict flagged = Decide();
            EXPECT_EQ(flagged.result, plain.result);
            EXPECT_EQ(flagged.reply, plain.reply == REPLY_ALLOW ? REPLY_ALLOW_FLAGGED : plain.reply);
        }
    }
}

TEST_F(DefenderModes, AllOtherFlagsAreIgnored) {
    AnswerThatMatches();
    event.Int32("flags", static_cast<int32_t>(~0x14U));
    EXPECT_EQ(Decide(), (Verdict{true, REPLY_ALLOW}));
    SetActions(R"({"TYPE-9":1})");
    AnswerWithoutMatch();
    EXPECT_EQ(Decide(), (Verdict{false, REPLY_BLOCK}));
}

TEST_F(DefenderModes, FlagsThatCannotBeReadCountAsNone) {
    event.FailingInt32("flags", EVENT_FLAG_DISCONNECT | EVENT_FLAG_REPLY_TWO, 1);
    AnswerThatMatches();
    EXPECT_EQ(Decide(), (Verdict{true, REPLY_ALLOW}));
    EXPECT_EQ(sink.Reports().size(), 1U);
}

TEST_F(DefenderModes, ModeIsReadWhenItIsTested) {
    AnswerThatMatches();
    host.onQuery = [this] { SetMode(MODE_ALL_FORBID); };
    EXPECT_EQ(Decide(), (Verdict{true, REPLY_BLOCK}));
    host.onQuery = [this] { SetMode(MODE_ALLOW_AFTER_DECISION); };
    AnswerWithoutMatch();
    EXPECT_EQ(Decide(), (Verdict{false, REPLY_ALLOW}));
    SetMode(MODE_ACTION_TABLE);
    host.onQuery = [this] { SetMode(MODE_EMERGENCY); };
    AnswerThatMatches();
    const size_t reports = sink.Reports().size();
    EXPECT_EQ(Decide(), (Verdict{true, REPLY_ALLOW}));
    EXPECT_EQ(sink.Reports().size(), reports);
}

} // namespace
