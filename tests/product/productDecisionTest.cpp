// Decisions of the shipped library: each reply, each mode, each way out, with the calls of host and sink.
#include <limits>

#include "product/productDecision.h"

using namespace kit;

namespace {

using Product = ProductDecision;

TEST_F(Product, AllowsAConnectionOfAnAllowedMachineAndDeletesItsDot) {
    host.answer = AnswerText("GUID-1", {"MID-1"});
    Allow("MID-1", {"TYPE-1"});
    EXPECT_EQ(Decide(), (Verdict{true, REPLY_ALLOW}));
    EXPECT_EQ(calls.Take(), (Lines{query, "FreeResult(answer 1)", DeleteCall("GUID-1", localMid, "TYPE-1"),
                                   ReportCall(Report(false))}));
}

TEST_F(Product, AllowsFlaggedWithFlag0x10) {
    host.answer = AnswerText("GUID-1", {"MID-1"});
    Allow("MID-1", {"TYPE-1"});
    event.Int32("flags", EVENT_FLAG_REPLY_TWO);
    EXPECT_EQ(Decide(), (Verdict{true, REPLY_ALLOW_FLAGGED}));
    EXPECT_EQ(calls.Take().back(), ReportCall(Report(false)));
}

TEST_F(Product, BlocksAConnectionOfAnotherMachine) {
    host.answer = AnswerText("GUID-1", {"MID-2"});
    Allow("MID-1", {"TYPE-1"});
    event.Int32("flags", EVENT_FLAG_REPLY_TWO);
    EXPECT_EQ(Decide(), (Verdict{false, REPLY_BLOCK}));
    EXPECT_EQ(calls.Take(), (Lines{query, "FreeResult(answer 1)", ReportCall(Report(true))}));
}

TEST_F(Product, MatchesAWebRuleUnderItsGuid) {
    rules.front() = MakeRule("GUID-1", "web");
    host.answer = AnswerText("GUID-1", {"MID-1"});
    Allow("MID-1", {"web"});
    EXPECT_EQ(Decide(), (Verdict{false, REPLY_BLOCK}));
    Allow("MID-1", {"GUID-1"});
    EXPECT_EQ(Decide(), (Verdict{true, REPLY_ALLOW}));
}

TEST_F(Product, LooksAtNoRuleBehindTheOneThatMatched) {
    AddRule("GUID-2", "TYPE-2");
    AddRule("GUID-3", "TYPE-3");
    host.answer = R"({"GUID-2":{"value":1,"mid":{"MID-2":1}},"GUID-3":{"value":1,"mid":{"MID-2":1}}})";
    Allow("MID-2", {"TYPE-2", "TYPE-3"});
    EXPECT_EQ(Decide(), (Verdict{true, REPLY_ALLOW}));
    EXPECT_EQ(calls.Take(), (Lines{QueryCall({"GUID-1", "GUID-2", "GUID-3"}, localMid), "FreeResult(answer 1)",
                                   DeleteCall("GUID-2", localMid, "TYPE-2"),
                                   ReportCall({.guids = {"GUID-2"}, .type = "TYPE-2", .block = false})}));
}

TEST_F(Product, BlocksANetworkErrorByDefaultAndAllowsItUnderExceptionAllow) {
    host.queryCode = DOT_QUERY_NETWORK_ERROR;
    EXPECT_EQ(Decide(), (Verdict{true, REPLY_BLOCK}));
    EXPECT_EQ(calls.Take(), (Lines{query, "FreeResult(null)", ReportCall(Report(true))}));
    ASSERT_TRUE(SetNumber(PROP_EXCEPTION_MODE, EXCEPTION_ALLOW));
    EXPECT_EQ(Decide(), (Verdict{true, REPLY_ALLOW}));
    EXPECT_EQ(calls.Take(), (Lines{query, "FreeResult(null)", ReportCall(Report(false))}));
}

TEST_F(Product, GivesTheTextOfANetworkErrorBack) {
    host.queryCode = DOT_QUERY_NETWORK_ERROR;
    host.answer = AnswerText("GUID-1", {"MID-1"});
    Allow("MID-1", {"TYPE-1"});
    EXPECT_EQ(Decide(), (Verdict{true, REPLY_BLOCK}));
    EXPECT_EQ(calls.Take(), (Lines{query, "FreeResult(answer 1)", ReportCall(Report(true))}));
}

TEST_F(Product, BlocksAQueryError) {
    host.queryCode = 1;
    host.answer = "{}";
    EXPECT_EQ(Decide(), (Verdict{false, REPLY_BLOCK}));
    EXPECT_EQ(calls.Take(), (Lines{query, "FreeResult(answer 1)", ReportCall(Report(true))}));
}

TEST_F(Product, BlocksANullAnswerAndGivesNullBack) {
    EXPECT_EQ(Decide(), (Verdict{false, REPLY_BLOCK}));
    EXPECT_EQ(calls.Take(), (Lines{query, "FreeResult(null)", ReportCall(Report(true))}));
}

TEST_F(Product, BlocksAnAnswerThatCannotBeParsed) {
    for (const char* const answer : {"", " ", "{", "{}x", "\xFF"}) {
        host.answer = answer;
        EXPECT_EQ(Decide(), (Verdict{false, REPLY_BLOCK})) << answer;
    }
    EXPECT_EQ(host.AnswersOut(), 0U);
}

TEST_F(Product, AllForbidBlocksAndKeepsTheAnswer) {
    ASSERT_TRUE(SetNumber(PROP_DEFENDER_MODE, MODE_ALL_FORBID));
    host.answer = AnswerText("GUID-1", {"MID-1"});
    Allow("MID-1", {"TYPE-1"});
    EXPECT_EQ(Decide(), (Verdict{true, REPLY_BLOCK}));
    EXPECT_EQ(calls.Take(), (Lines{query, ReportCall(Report(true))}));
    EXPECT_EQ(host.AnswersOut(), 1U);
}

TEST_F(Product, AllForbidLeavesANetworkErrorToTheExceptionMode) {
    ASSERT_TRUE(SetNumber(PROP_DEFENDER_MODE, MODE_ALL_FORBID));
    ASSERT_TRUE(SetNumber(PROP_EXCEPTION_MODE, EXCEPTION_ALLOW));
    host.queryCode = DOT_QUERY_NETWORK_ERROR;
    EXPECT_EQ(Decide(), (Verdict{true, REPLY_ALLOW}));
}

TEST_F(Product, ActionTableTurnsABlockIntoAnAllow) {
    ASSERT_TRUE(SetText(PROP_ACTION_JSON, R"({"TYPE-1":1})"));
    host.answer = "{}";
    EXPECT_EQ(Decide(), (Verdict{false, REPLY_ALLOW}));
    EXPECT_EQ(calls.Take(), (Lines{query, "FreeResult(answer 1)", ReportCall(Report(false, true))}));
    ASSERT_TRUE(SetText(PROP_ACTION_JSON, R"({"TYPE-1":0})"));
    EXPECT_EQ(Decide(), (Verdict{false, REPLY_BLOCK}));
}

TEST_F(Product, AllowAfterDecisionAllowsInTheEnd) {
    ASSERT_TRUE(SetNumber(PROP_DEFENDER_MODE, MODE_ALLOW_AFTER_DECISION));
    host.queryCode = 1;
    event.Int32("flags", EVENT_FLAG_REPLY_TWO);
    EXPECT_EQ(Decide(), (Verdict{false, REPLY_ALLOW_FLAGGED}));
    EXPECT_EQ(calls.Take(), (Lines{query, "FreeResult(null)", ReportCall(Report(false, true))}));
}

TEST_F(Product, EmergencyAllowsWithoutQueryAndReport) {
    ASSERT_TRUE(SetNumber(PROP_DEFENDER_MODE, MODE_EMERGENCY));
    EXPECT_EQ(Decide(), (Verdict{true, REPLY_ALLOW}));
    event.Int32("flags", EVENT_FLAG_REPLY_TWO);
    EXPECT_EQ(Decide(), (Verdict{true, REPLY_ALLOW_FLAGGED}));
    EXPECT_EQ(calls.Take(), Lines{});
}

TEST_F(Product, DisconnectEventIsAllowedWithoutQueryAndReport) {
    event.Int32("flags", EVENT_FLAG_DISCONNECT);
    EXPECT_EQ(Decide(), (Verdict{true, REPLY_ALLOW}));
    event.Int32("flags", 0x14);
    EXPECT_EQ(Decide(), (Verdict{true, REPLY_ALLOW_FLAGGED}));
    EXPECT_EQ(calls.Take(), Lines{});
}

TEST_F(Product, AModeWithoutBehaviourLeavesTheDecision) {
    ASSERT_TRUE(SetNumber(PROP_DEFENDER_MODE, 77));
    ASSERT_TRUE(SetText(PROP_ACTION_JSON, R"({"TYPE-1":1})"));
    host.answer = AnswerText("GUID-1", {"MID-1"});
    Allow("MID-2", {"TYPE-1"});
    EXPECT_EQ(Decide(), (Verdict{false, REPLY_BLOCK}));
    Allow("MID-1", {"TYPE-1"});
    EXPECT_EQ(Decide(), (Verdict{true, REPLY_ALLOW}));
}

TEST_F(Product, StoppedItQueriesAndBlocks) {
    host.answer = AnswerText("GUID-1", {"MID-1"});
    Allow("MID-1", {"TYPE-1"});
    EXPECT_FALSE(receiver->Stop());
    EXPECT_EQ(Decide(), (Verdict{false, REPLY_BLOCK}));
    EXPECT_EQ(calls.Take(), (Lines{query, "FreeResult(answer 1)", ReportCall(Report(true))}));
    EXPECT_TRUE(receiver->Start());
    EXPECT_EQ(Decide(), (Verdict{true, REPLY_ALLOW}));
}

TEST_F(Product, ParameterErrorsGiveFalseAndNoReport) {
    uint32_t reply = unwritten;
    EXPECT_FALSE(receiver->HandleEvent(&event, rulePointers.data(), 1, nullptr));
    EXPECT_FALSE(receiver->HandleEvent(nullptr, rulePointers.data(), 1, &reply));
    EXPECT_EQ(reply, REPLY_BLOCK);
    reply = unwritten;
    EXPECT_FALSE(receiver->HandleEvent(&event, nullptr, 1, &reply));
    EXPECT_EQ(reply, REPLY_BLOCK);
    reply = unwritten;
    EXPECT_FALSE(receiver->HandleEvent(&event, rulePointers.data(), 0, &reply));
    EXPECT_EQ(reply, REPLY_BLOCK);
    EXPECT_EQ(calls.Take(), Lines{});
}

TEST_F(Product, TheMachineIdThatWasSetGoesToTheHost) {
    ASSERT_TRUE(SetText(PROP_MID, "ANOTHER-MID"));
    host.answer = AnswerText("GUID-1", {"MID-1"});
    Allow("MID-1", {"TYPE-1"});
    Decide();
    EXPECT_EQ(calls.Take(), (Lines{QueryCall({"GUID-1"}, "ANOTHER-MID"), "FreeResult(answer 1)",
                                   DeleteCall("GUID-1", "ANOTHER-MID", "TYPE-1"), ReportCall(Report(false))}));
}

TEST_F(Product, TheReportIsThisTextByteForByte) {
    rules.front() = MakeRule("rule-guid-1", "rule-type-text");
    AddRule("rule-guid-2", "another-type");
    host.queryCode = 1;
    Decide();
    EXPECT_EQ(sink.Reports(), Lines{"{\n"
                                    "    \"rule_guid\": [\n"
                                    "        \"rule-guid-1\",\n"
                                    "        \"rule-guid-2\"\n"
                                    "    ],\n"
                                    "    \"type\": \"rule-type-text\",\n"
                                    "    \"block\": true,\n"
                                    "    \"block_modified\": false,\n"
                                    "    \"proc_name\": \"System\",\n"
                                    "    \"proc_path\": \"System\",\n"
                                    "    \"send_ip\": \"10.0.0.2\",\n"
                                    "    \"send_port\": \"49152\",\n"
                                    "    \"recv_ip\": \"10.0.0.1\",\n"
                                    "    \"recv_port\": \"445\",\n"
                                    "    \"send_mid\": \"\",\n"
                                    "    \"net_drv_version\": \"20001\",\n"
                                    "    \"protocol\": \"rule-type-text\"\n"
                                    "}"});
}

TEST_F(Product, TheReportEscapesTextsAndWritesNumbersAtTheirEdges) {
    rules.front() = MakeRule("a\"b\\c\n\x01\x7F\xC3\xA4\xFF", "t\t");
    event.Int32("remote_addr_port", -1)
        .Int32("local_addr_port", 0)
        .Int64("net_drv", std::numeric_limits<int64_t>::min())
        .String("remote_addr_ip", "fe80::1%\"eth0\"")
        .String("local_addr_ip", "");
    host.queryCode = 1;
    Decide();
    EXPECT_EQ(sink.Reports(), Lines{(ExpectedReport{.guids = {"a\\\"b\\\\c\\n\\u0001\x7F\xC3\xA4\xFF"},
                                                    .type = "t\\t",
                                                    .sendIp = "fe80::1%\\\"eth0\\\"",
                                                    .sendPort = "4294967295",
                                                    .recvIp = "",
                                                    .recvPort = "0",
                                                    .netDrvVersion = "-9223372036854775808"}
                                         .Text())});
}

TEST_F(Product, WithoutASinkItDecidesAllTheSame) {
    receiver->SetReportSink(nullptr);
    host.answer = AnswerText("GUID-1", {"MID-1"});
    Allow("MID-1", {"TYPE-1"});
    EXPECT_EQ(Decide(), (Verdict{true, REPLY_ALLOW}));
    EXPECT_EQ(calls.Take(), (Lines{query, "FreeResult(answer 1)", DeleteCall("GUID-1", localMid, "TYPE-1")}));
}

TEST_F(Product, MayBeCalledFromWithinTheHost) {
    host.answer = AnswerText("GUID-1", {"MID-1"});
    bool within = false;
    const auto comeBack = [&] {
        if (!within) {
            within = true;
            Allow("MID-1", {"TYPE-1"});
            SetText(PROP_ACTION_JSON, R"({"TYPE-9":1})");
            EXPECT_EQ(Decide(), (Verdict{true, REPLY_ALLOW}));
            within = false;
        }
    };
    host.onQuery = comeBack;
    sink.onReport = comeBack;
    EXPECT_EQ(Decide(), (Verdict{true, REPLY_ALLOW}));
}

TEST_F(Product, ARecordThatLiesAboutItsTextsDoesNoHarm) {
    host.queryCode = 1;
    const StringBehaviour behaviours[] = {{.firstSize = 1, .writesNul = false},
                                          {.firstSize = 0},
                                          {.firstSize = -1},
                                          {.firstSize = std::numeric_limits<int32_t>::min()},
                                          {.secondResult = 1},
                                          {.writes = false},
                                          {.secondSize = std::numeric_limits<int32_t>::max()},
                                          {.firstResult = 0}};
    const Lines read{"G", "", "", "", "", "", "GUID-1", ""};
    for (size_t i = 0; i < read.size(); ++i) {
        rules.front().Behave("guid", behaviours[i]);
        EXPECT_EQ(Decide(), (Verdict{false, REPLY_BLOCK}));
        EXPECT_EQ(calls.Take().front(), QueryCall({read[i]}, localMid)) << i;
    }
}

} // namespace
