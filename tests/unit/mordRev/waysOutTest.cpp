// Each way on which HandleEvent ends: reply, result, records and host calls as a whole.
#include "unit/mordRev/decisionFixture.h"

using namespace kit;

namespace {

// One rule "GUID-1" of type "TYPE-1"; the default mode with an empty action table, so that the decision stands as it
// fell.
class WaysOut : public DecisionFixture {
protected:
    void SetUp() override {
        DecisionFixture::SetUp();
        AddRule("GUID-1", "TYPE-1");
    }

    ExpectedReport Report(bool block) const { return {.guids = {"GUID-1"}, .type = "TYPE-1", .block = block}; }

    // The records of an event that came to a report, with `between` logged before it.
    Lines Records(const Lines& between, bool block) const {
        return Joined({{inHandleEvent.Trace("==>enter")}, between, ReportRecords(Report(block))});
    }

    const std::string query = QueryCall({"GUID-1"}, "LOCAL-MID");
};

TEST_F(WaysOut, EmergencyModeRepliesAllowAtOnceWithoutQueryAndReport) {
    SetMode(MODE_EMERGENCY);
    EXPECT_EQ(Decide(), (Verdict{true, REPLY_ALLOW}));
    EXPECT_EQ(TakeRecords(), (Lines{inHandleEvent.Trace("==>enter"), inHandleEvent.Trace("defender mode is emergency"),
                                    inReport.Trace("==>enter"), inReport.Trace("emergency mode not report")}));
    EXPECT_EQ(TakeCalls(), Lines{});
}

TEST_F(WaysOut, EmergencyModeWithADisconnectEventTakesTheEmergencyBranch) {
    SetMode(MODE_EMERGENCY);
    event.Int32("flags", EVENT_FLAG_DISCONNECT);
    EXPECT_EQ(Decide(), (Verdict{true, REPLY_ALLOW}));
    EXPECT_EQ(TakeRecords(), (Lines{inHandleEvent.Trace("==>enter"), inHandleEvent.Trace("defender mode is emergency"),
                                    inReport.Trace("==>enter"), inReport.Trace("emergency mode not report")}));
    EXPECT_EQ(TakeCalls(), Lines{});
}

TEST_F(WaysOut, DisconnectEventRepliesAllowWithoutQueryAndReport) {
    event.Int32("flags", EVENT_FLAG_DISCONNECT);
    EXPECT_EQ(Decide(), (Verdict{true, REPLY_ALLOW}));
    EXPECT_EQ(TakeRecords(), (Lines{inHandleEvent.Trace("==>enter"), inReport.Trace("==>enter"),
                                    inReport.Trace("disconnect event not report")}));
    EXPECT_EQ(TakeCalls(), Lines{});
}

TEST_F(WaysOut, Flags0x14GiveReply2AndNoReport) {
    event.Int32("flags", 0x14);
    EXPECT_EQ(Decide(), (Verdict{true, REPLY_ALLOW_FLAGGED}));
    EXPECT_EQ(TakeRecords(), (Lines{inHandleEvent.Trace("==>enter"), inReport.Trace("==>enter"),
                                    inReport.Trace("disconnect event not report")}));
    EXPECT_EQ(TakeCalls(), Lines{});
}

TEST_F(WaysOut, NetworkErrorBlocksUnderExceptionBlock) {
    host.queryCode = DOT_QUERY_NETWORK_ERROR;
    EXPECT_EQ(Decide(), (Verdict{true, REPLY_BLOCK}));
    EXPECT_EQ(TakeRecords(), Records({inHandleEvent.Trace("query dot result_json="),
                                      inHandleEvent.Trace("query dot network error, exception_mode=2 ,reply=0")},
                                     true));
    EXPECT_EQ(TakeCalls(), (Lines{query, "FreeResult(null)", ReportCall(Report(true))}));
}

TEST_F(WaysOut, NetworkErrorAllowsUnderExceptionAllow) {
    SetExceptionMode(EXCEPTION_ALLOW);
    host.queryCode = DOT_QUERY_NETWORK_ERROR;
    EXPECT_EQ(Decide(), (Verdict{true, REPLY_ALLOW}));
    EXPECT_EQ(TakeRecords(), Records({inHandleEvent.Trace("query dot result_json="),
                                      inHandleEvent.Trace("query dot network error, exception_mode=1 ,reply=1")},
                                     false));
    EXPECT_EQ(TakeCalls(), (Lines{query, "FreeResult(null)", ReportCall(Report(false))}));
}

TEST_F(WaysOut, NetworkErrorBlocksUnderEveryExceptionModeButAllow) {
    host.queryCode = DOT_QUERY_NETWORK_ERROR;
    for (const uint32_t mode : {0U, 3U, 77U, 0x80000001U, 0xFFFFFFFFU}) {
        SetExceptionMode(mode);
        EXPECT_EQ(Decide(), (Verdict{true, REPLY_BLOCK}));
        EXPECT_EQ(TakeRecords(), Records({inHandleEvent.Trace("query dot result_json="),
                                          inHandleEvent.Trace("query dot network error, exception_mode=" +
                                                              std::to_string(mode) + " ,reply=0")},
                                         true));
    }
}

TEST_F(WaysOut, NetworkErrorWithATextLogsItGivesItBackAndDoesNotParseIt) {
    host.queryCode = DOT_QUERY_NETWORK_ERROR;
    host.answer = AnswerText("GUID-1", {"MID-1"});
    Allow("MID-1", {"TYPE-1"});
    EXPECT_EQ(Decide(), (Verdict{true, REPLY_BLOCK}));
    EXPECT_EQ(TakeRecords(), Records({inHandleEvent.Trace("query dot result_json=" + *host.answer),
                                      inHandleEvent.Trace("query dot network error, exception_mode=2 ,reply=0")},
                                     true));
    EXPECT_EQ(TakeCalls(), (Lines{query, "FreeResult(answer 1)", ReportCall(Report(true))}));
    EXPECT_EQ(host.AnswersOut(), 0U);
}

TEST_F(WaysOut, EveryOtherCodeIsAQueryErrorWithBlockAndFalse) {
    for (const int32_t code : {1, -1, 201, 1006, 1008, 0x7FFFFFFF, -0x7FFFFFFF - 1}) {
        host.queryCode = code;
        EXPECT_EQ(Decide(), (Verdict{false, REPLY_BLOCK}));
        EXPECT_EQ(TakeRecords(), Records({inHandleEvent.Trace("query dot result_json="),
                                          inHandleEvent.Trace(" query dot error, reply=0")},
                                         true));
        EXPECT_EQ(TakeCalls(), (Lines{query, "FreeResult(null)", ReportCall(Report(true))}));
    }
}

TEST_F(WaysOut, TheExceptionModeHasNoSayInAQueryError) {
    SetExceptionMode(EXCEPTION_ALLOW);
    host.queryCode = 1;
    EXPECT_EQ(Decide(), (Verdict{false, REPLY_BLOCK}));
}

TEST_F(WaysOut, QueryErrorWithATextLogsItGivesItBackAndDoesNotParseIt) {
    host.queryCode = 5;
    host.answer = AnswerText("GUID-1", {"MID-1"});
    Allow("MID-1", {"TYPE-1"});
    EXPECT_EQ(Decide(), (Verdict{false, REPLY_BLOCK}));
    EXPECT_EQ(TakeRecords(), Records({inHandleEvent.Trace("query dot result_json=" + *host.answer),
                                      inHandleEvent.Trace(" query dot error, reply=0")},
                                     true));
    EXPECT_EQ(TakeCalls(), (Lines{query, "FreeResult(answer 1)", ReportCall(Report(true))}));
}

TEST_F(WaysOut, AnsweredWithNullIsAQueryErrorAndNullIsGivenBack) {
    host.queryCode = DOT_QUERY_ANSWERED;
    host.answer.reset();
    EXPECT_EQ(Decide(), (Verdict{false, REPLY_BLOCK}));
    EXPECT_EQ(TakeRecords(),
              Records({inHandleEvent.Trace("query dot result_json="), inHandleEvent.Trace(" query dot error, reply=0")},
                      true));
    EXPECT_EQ(TakeCalls(), (Lines{query, "FreeResult(null)", ReportCall(Report(true))}));
}

TEST_F(WaysOut, AllForbidBlocksAnAnsweredQueryAndNeverGivesTheAnswerBack) {
    SetMode(MODE_ALL_FORBID);
    host.answer = AnswerText("GUID-1", {"MID-1"});
    Allow("MID-1", {"TYPE-1"});
    EXPECT_EQ(Decide(), (Verdict{true, REPLY_BLOCK}));
    EXPECT_EQ(TakeRecords(), Records({inHandleEvent.Trace("query dot result_json=" + *host.answer),
                                      inHandleEvent.Trace(" defender mode is all forbid, reply=0")},
                                     true));
    EXPECT_EQ(TakeCalls(), (Lines{query, ReportCall(Report(true))}));
    EXPECT_EQ(host.AnswersOut(), 1U);
}

TEST_F(WaysOut, AllForbidDoesNotLookAtTheAnswer) {
    SetMode(MODE_ALL_FORBID);
    host.answer = "no json";
    EXPECT_EQ(Decide(), (Verdict{true, REPLY_BLOCK}));
    EXPECT_EQ(TakeRecords(), Records({inHandleEvent.Trace("query dot result_json=no json"),
                                      inHandleEvent.Trace(" defender mode is all forbid, reply=0")},
                                     true));
    EXPECT_EQ(host.AnswersOut(), 1U);
}

TEST_F(WaysOut, AllForbidWithANullAnswerIsAQueryError) {
    SetMode(MODE_ALL_FORBID);
    EXPECT_EQ(Decide(), (Verdict{false, REPLY_BLOCK}));
    EXPECT_EQ(TakeRecords(),
              Records({inHandleEvent.Trace("query dot result_json="), inHandleEvent.Trace(" query dot error, reply=0")},
                      true));
    EXPECT_EQ(TakeCalls(), (Lines{query, "FreeResult(null)", ReportCall(Report(true))}));
}

TEST_F(WaysOut, AllForbidGivesTheAnswerOfAFailedQueryBack) {
    SetMode(MODE_ALL_FORBID);
    host.answer = "{}";
    for (const int32_t code : {1, DOT_QUERY_NETWORK_ERROR}) {
        host.queryCode = code;
        Decide();
        EXPECT_EQ(host.AnswersOut(), 0U);
    }
}

TEST_F(WaysOut, AnAnswerThatIsNoJsonBlocksAndIsGivenBack) {
    host.answer = R"({"GUID-1":)";
    EXPECT_EQ(Decide(), (Verdict{false, REPLY_BLOCK}));
    EXPECT_EQ(TakeRecords(), Records({inHandleEvent.Trace(R"(query dot result_json={"GUID-1":)"),
                                      inParseQueryResult.Error("data format error."),
                                      inHandleEvent.Trace(" query dot error, reply=0")},
                                     true));
    EXPECT_EQ(TakeCalls(), (Lines{query, "FreeResult(answer 1)", ReportCall(Report(true))}));
}

TEST_F(WaysOut, AnEmptyAnswerCannotBeParsed) {
    host.answer = "";
    EXPECT_EQ(Decide(), (Verdict{false, REPLY_BLOCK}));
    EXPECT_EQ(TakeRecords(),
              Records({inHandleEvent.Trace("query dot result_json="), inParseQueryResult.Error("param error"),
                       inHandleEvent.Trace(" query dot error, reply=0")},
                      true));
    EXPECT_EQ(TakeCalls(), (Lines{query, "FreeResult(answer 1)", ReportCall(Report(true))}));
}

TEST_F(WaysOut, AnAnswerOfBlanksCannotBeParsed) {
    host.answer = " \t\r\n";
    EXPECT_EQ(Decide(), (Verdict{false, REPLY_BLOCK}));
    EXPECT_EQ(TakeRecords(), Records({inHandleEvent.Trace("query dot result_json= \t\r\n"),
                                      inParseQueryResult.Error("data format error."),
                                      inHandleEvent.Trace(" query dot error, reply=0")},
                                     true));
}

TEST_F(WaysOut, ARuleThatYieldsAllowHasItsDotDeletedAfterTheAnswerWentBack) {
    host.answer = AnswerText("GUID-1", {"MID-1"});
    Allow("MID-1", {"TYPE-1"});
    EXPECT_EQ(Decide(), (Verdict{true, REPLY_ALLOW}));
    EXPECT_EQ(TakeRecords(),
              Records({inHandleEvent.Trace("query dot result_json=" + *host.answer),
                       inParseQueryResult.Trace("guid is:GUID-1"), inParseQueryResult.Trace("get mid=MID-1"),
                       inIsMatchmid.Trace("CMordRecv::IsMatchmid success,mid_match_output matchedMID-1"),
                       inHandleEventInner.Trace("match mid=MID-1,rule guid=GUID-1,reply:1"),
                       inHandleEventInner.Trace("del dot,ret=1,rule guidGUID-1")},
                      false));
    EXPECT_EQ(TakeCalls(), (Lines{query, "FreeResult(answer 1)", DeleteCall("GUID-1", "LOCAL-MID", "TYPE-1"),
                                  ReportCall(Report(false))}));
}

TEST_F(WaysOut, NoRuleThatYieldsAllowGivesBlockAndFalse) {
    host.answer = AnswerText("GUID-1", {"MID-1"});
    Allow("MID-2", {"TYPE-1"});
    EXPECT_EQ(Decide(), (Verdict{false, REPLY_BLOCK}));
    EXPECT_EQ(TakeRecords(),
              Records({inHandleEvent.Trace("query dot result_json=" + *host.answer),
                       inParseQueryResult.Trace("guid is:GUID-1"), inParseQueryResult.Trace("get mid=MID-1"),
                       inIsMatchmid.Trace("CMordRecv::IsMatchmid fail end"),
                       inHandleEventInner.Trace("not match any mid,guid:GUID-1,reply:0")},
                      true));
    EXPECT_EQ(TakeCalls(), (Lines{query, "FreeResult(answer 1)", ReportCall(Report(true))}));
}

TEST_F(WaysOut, AnAnswerWithoutMembersDecidesNothing) {
    for (const char* const answer : {"{}", "[]", "null", "true", "1", "\"text\"", R"([{"GUID-1":1}])"}) {
        host.answer = answer;
        EXPECT_EQ(Decide(), (Verdict{false, REPLY_BLOCK}));
        EXPECT_EQ(TakeRecords(),
                  Records({inHandleEvent.Trace("query dot result_json=" + *host.answer),
                           inHandleEventInner.Trace("query dot result is empty, reply=0,rule guidGUID-1")},
                          true));
    }
}

TEST_F(WaysOut, NoFailureChangesTheObjectAndTheNextEventStartsAfresh) {
    Allow("MID-1", {"TYPE-1"});
    const auto failWith = [this](int32_t code, std::optional<std::string> answer) {
        host.queryCode = code;
        host.answer = std::move(answer);
        EXPECT_EQ(Decide().reply, REPLY_BLOCK);
        host.queryCode = DOT_QUERY_ANSWERED;
        host.answer = AnswerText("GUID-1", {"MID-1"});
        EXPECT_EQ(Decide(), (Verdict{true, REPLY_ALLOW}));
        EXPECT_EQ(Fields().Mid(), "LOCAL-MID");
        EXPECT_EQ(Fields().Mode(), MODE_ACTION_TABLE);
        EXPECT_EQ(Fields().ExceptionMode(), EXCEPTION_BLOCK);
        EXPECT_EQ(Fields().AllowedMids(), (AllowTable{{"TYPE-1", {"MID-1"}}}));
        EXPECT_EQ(Fields().Actions(), ActionTable{});
    };
    failWith(DOT_QUERY_NETWORK_ERROR, std::nullopt);
    failWith(1, "{}");
    failWith(DOT_QUERY_ANSWERED, std::nullopt);
    failWith(DOT_QUERY_ANSWERED, "");
    failWith(DOT_QUERY_ANSWERED, "{");
}

} // namespace
