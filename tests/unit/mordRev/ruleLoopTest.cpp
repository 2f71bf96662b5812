// How an event goes through its rules: which is looked at, which is remembered, whose type serves.
#include "unit/mordRev/decisionFixture.h"

using namespace kit;

namespace {

class RuleLoop : public DecisionFixture {
protected:
    // Three rules with types of their own; the answer holds "MID-n" for "GUID-n".
    void AddThreeRules() {
        AddRule("GUID-1", "TYPE-1");
        AddRule("GUID-2", "TYPE-2");
        AddRule("GUID-3", "TYPE-3");
        host.answer = R"({"GUID-1":{"value":1,"mid":{"MID-1":1}},"GUID-2":{"value":1,"mid":{"MID-2":1}},)"
                      R"("GUID-3":{"value":1,"mid":{"MID-3":1}}})";
    }

    int answers = 0; // of the host, so far
    const Lines threeGuids{"GUID-1", "GUID-2", "GUID-3"};
};

TEST_F(RuleLoop, SecondOfThreeYieldsAllowTheThirdIsNotLookedAtAndTheReportListsTheSecondAlone) {
    AddThreeRules();
    Allow("MID-2", {"TYPE-2"});
    EXPECT_EQ(Decide(), (Verdict{true, REPLY_ALLOW}));
    const ExpectedReport report{.guids = {"GUID-2"}, .type = "TYPE-2", .block = false};
    EXPECT_EQ(TakeRecords(),
              Joined({{inHandleEvent.Trace("==>enter"), inHandleEvent.Trace("query dot result_json=" + *host.answer),
                       inParseQueryResult.Trace("guid is:GUID-1"), inParseQueryResult.Trace("get mid=MID-1"),
                       inParseQueryResult.Trace("guid is:GUID-2"), inParseQueryResult.Trace("get mid=MID-2"),
                       inParseQueryResult.Trace("guid is:GUID-3"), inParseQueryResult.Trace("get mid=MID-3"),
                       inIsMatchmid.Trace("CMordRecv::IsMatchmid fail end"),
                       inHandleEventInner.Trace("not match any mid,guid:GUID-1,reply:0"),
                       inIsMatchmid.Trace("CMordRecv::IsMatchmid success,mid_match_output matchedMID-2"),
                       inHandleEventInner.Trace("match mid=MID-2,rule guid=GUID-2,reply:1"),
                       inHandleEventInner.Trace("del dot,ret=1,rule guidGUID-2")},
                      ReportRecords(report)}));
    EXPECT_EQ(TakeCalls(), (Lines{QueryCall(threeGuids, "LOCAL-MID"), "FreeResult(answer 1)",
                                  DeleteCall("GUID-2", "LOCAL-MID", "TYPE-2"), ReportCall(report)}));
}

TEST_F(RuleLoop, ReportsTheRuleThatMatchedAlsoWhenTheHostOverwritesItsArrayMeanwhile) {
    AddThreeRules();
    Allow("MID-2", {"TYPE-2"});
    FakeRecord other;
    other.String("guid", "GUID-OTHER").String("type", "TYPE-OTHER");
    for (IEventRecord* const replacement : {static_cast<IEventRecord*>(&other), static_cast<IEventRecord*>(nullptr)}) {
        const auto kept = rulePointers;
        host.onDelete = [this, replacement] { std::fill(rulePointers.begin(), rulePointers.end(), replacement); };
        EXPECT_EQ(Decide(), (Verdict{true, REPLY_ALLOW}));
        rulePointers = kept;
        EXPECT_EQ(TakeCalls(),
                  (Lines{QueryCall(threeGuids, "LOCAL-MID"), "FreeResult(answer " + std::to_string(++answers) + ")",
                         DeleteCall("GUID-2", "LOCAL-MID", "TYPE-2"),
                         ReportCall({.guids = {"GUID-2"}, .type = "TYPE-2", .block = false})}));
    }
}

TEST_F(RuleLoop, ModiyReplyGetsTheTypeOfTheFirstRuleAlsoWhenALaterOneMatched) {
    AddThreeRules();
    Allow("MID-2", {"TYPE-2"});
    SetActions(R"({"TYPE-1":1})");
    EXPECT_EQ(Decide(), (Verdict{true, REPLY_ALLOW}));
    const Lines records = TakeRecords();
    EXPECT_EQ(std::count(records.begin(), records.end(), inModiyReply.Trace("type=TYPE-1,defender mode=3,action=1")),
              1);
    // It was an allow before: nothing counts as modified.
    EXPECT_EQ(sink.Reports(), (Lines{ExpectedReport{.guids = {"GUID-2"}, .type = "TYPE-2", .block = false}.Text()}));
}

TEST_F(RuleLoop, TheActionOfALaterRulesTypeHasNoSay) {
    AddThreeRules();
    Allow("MID-9", {"TYPE-1", "TYPE-2", "TYPE-3"});
    SetActions(R"({"TYPE-2":1,"TYPE-3":1})");
    EXPECT_EQ(Decide(), (Verdict{false, REPLY_BLOCK}));
}

TEST_F(RuleLoop, NoneOfThreeYieldsAllowTheResultIsFalseAndTheReportListsAllThree) {
    AddThreeRules();
    Allow("MID-9", {"TYPE-1", "TYPE-2", "TYPE-3"});
    EXPECT_EQ(Decide(), (Verdict{false, REPLY_BLOCK}));
    const ExpectedReport report{.guids = threeGuids, .type = "TYPE-1"};
    EXPECT_EQ(TakeRecords(),
              Joined({{inHandleEvent.Trace("==>enter"), inHandleEvent.Trace("query dot result_json=" + *host.answer),
                       inParseQueryResult.Trace("guid is:GUID-1"), inParseQueryResult.Trace("get mid=MID-1"),
                       inParseQueryResult.Trace("guid is:GUID-2"), inParseQueryResult.Trace("get mid=MID-2"),
                       inParseQueryResult.Trace("guid is:GUID-3"), inParseQueryResult.Trace("get mid=MID-3"),
                       inIsMatchmid.Trace("CMordRecv::IsMatchmid fail end"),
                       inHandleEventInner.Trace("not match any mid,guid:GUID-1,reply:0"),
                       inIsMatchmid.Trace("CMordRecv::IsMatchmid fail end"),
                       inHandleEventInner.Trace("not match any mid,guid:GUID-2,reply:0"),
                       inIsMatchmid.Trace("CMordRecv::IsMatchmid fail end"),
                       inHandleEventInner.Trace("not match any mid,guid:GUID-3,reply:0")},
                      ReportRecords(report)}));
    EXPECT_EQ(TakeCalls(), (Lines{QueryCall(threeGuids, "LOCAL-MID"), "FreeResult(answer 1)", ReportCall(report)}));
}

TEST_F(RuleLoop, TheFirstRuleThatMatchesEndsTheLoop) {
    AddThreeRules();
    Allow("MID-1", {"TYPE-1"});
    EXPECT_EQ(Decide(), (Verdict{true, REPLY_ALLOW}));
    EXPECT_EQ(TakeCalls(), (Lines{QueryCall(threeGuids, "LOCAL-MID"), "FreeResult(answer 1)",
                                  DeleteCall("GUID-1", "LOCAL-MID", "TYPE-1"),
                                  ReportCall({.guids = {"GUID-1"}, .type = "TYPE-1", .block = false})}));
}

TEST_F(RuleLoop, TheLastRuleCanMatch) {
    AddThreeRules();
    Allow("MID-3", {"TYPE-3"});
    EXPECT_EQ(Decide(), (Verdict{true, REPLY_ALLOW}));
    EXPECT_EQ(TakeCalls(), (Lines{QueryCall(threeGuids, "LOCAL-MID"), "FreeResult(answer 1)",
                                  DeleteCall("GUID-3", "LOCAL-MID", "TYPE-3"),
                                  ReportCall({.guids = {"GUID-3"}, .type = "TYPE-3", .block = false})}));
}

TEST_F(RuleLoop, NotStartedTheQueryIsMadeEachRuleLogsAndModiyReplyAndReportStillRun) {
    AddThreeRules();
    Allow("MID-1", {"TYPE-1"});
    SetActions(R"({"TYPE-1":1})");
    receiver->Stop();
    EXPECT_EQ(Decide(), (Verdict{false, REPLY_ALLOW}));
    const ExpectedReport report{.guids = threeGuids, .type = "TYPE-1", .block = false, .blockModified = true};
    EXPECT_EQ(
        TakeRecords(),
        Joined({{inHandleEvent.Trace("==>enter"), inHandleEvent.Trace("query dot result_json=" + *host.answer),
                 inParseQueryResult.Trace("guid is:GUID-1"), inParseQueryResult.Trace("get mid=MID-1"),
                 inParseQueryResult.Trace("guid is:GUID-2"), inParseQueryResult.Trace("get mid=MID-2"),
                 inParseQueryResult.Trace("guid is:GUID-3"), inParseQueryResult.Trace("get mid=MID-3"),
                 inHandleEventInner.Error("receving end not start"), inHandleEventInner.Error("receving end not start"),
                 inHandleEventInner.Error("receving end not start"),
                 inModiyReply.Trace("type=TYPE-1,defender mode=3,action=1")},
                ReportRecords(report)}));
    EXPECT_EQ(TakeCalls(), (Lines{QueryCall(threeGuids, "LOCAL-MID"), "FreeResult(answer 1)", ReportCall(report)}));
}

TEST_F(RuleLoop, NotStartedTheReplyStays0) {
    AddThreeRules();
    Allow("MID-1", {"TYPE-1"});
    receiver->Stop();
    EXPECT_EQ(Decide(), (Verdict{false, REPLY_BLOCK}));
    EXPECT_EQ(sink.Reports(), (Lines{ExpectedReport{.guids = threeGuids, .type = "TYPE-1"}.Text()}));
}

TEST_F(RuleLoop, TwoRulesOfOneGuidDeleteTheDotOnce) {
    AddRule("GUID-1", "TYPE-1");
    AddRule("GUID-1", "TYPE-1");
    host.answer = AnswerText("GUID-1", {"MID-1"});
    Allow("MID-1", {"TYPE-1"});
    EXPECT_EQ(Decide(), (Verdict{true, REPLY_ALLOW}));
    EXPECT_EQ(TakeCalls(), (Lines{QueryCall({"GUID-1", "GUID-1"}, "LOCAL-MID"), "FreeResult(answer 1)",
                                  DeleteCall("GUID-1", "LOCAL-MID", "TYPE-1"),
                                  ReportCall({.guids = {"GUID-1"}, .type = "TYPE-1", .block = false})}));
}

TEST_F(RuleLoop, TwoRulesOfOneGuidLookAtTheSameEntry) {
    AddRule("GUID-1", "TYPE-1");
    AddRule("GUID-1", "TYPE-2");
    host.answer = AnswerText("GUID-1", {"MID-1"});
    Allow("MID-1", {"TYPE-2"});
    EXPECT_EQ(Decide(), (Verdict{true, REPLY_ALLOW}));
    EXPECT_EQ(TakeCalls(), (Lines{QueryCall({"GUID-1", "GUID-1"}, "LOCAL-MID"), "FreeResult(answer 1)",
                                  DeleteCall("GUID-1", "LOCAL-MID", "TYPE-2"),
                                  ReportCall({.guids = {"GUID-1"}, .type = "TYPE-2", .block = false})}));
}

TEST_F(RuleLoop, ARuleWithoutGuidTakesPartWithAnEmptyOne) {
    FakeRecord bare("bare", nullptr);
    bare.String("type", "TYPE-1");
    rulePointers.push_back(&bare);
    host.answer = AnswerText("", {"MID-1"});
    Allow("MID-1", {"TYPE-1"});
    EXPECT_EQ(Decide(), (Verdict{true, REPLY_ALLOW}));
    EXPECT_EQ(TakeCalls(),
              (Lines{QueryCall({""}, "LOCAL-MID"), "FreeResult(answer 1)", DeleteCall("", "LOCAL-MID", "TYPE-1"),
                     ReportCall({.guids = {""}, .type = "TYPE-1", .block = false})}));
}

TEST_F(RuleLoop, ARuleWithoutTypeGivesTheEmptyTypeWord) {
    FakeRecord bare("bare", nullptr);
    bare.String("guid", "GUID-1");
    rulePointers.push_back(&bare);
    host.answer = AnswerText("GUID-1", {"MID-1"});
    Allow("MID-1", {""});
    EXPECT_EQ(Decide(), (Verdict{true, REPLY_ALLOW}));
    EXPECT_EQ(TakeCalls(),
              (Lines{QueryCall({"GUID-1"}, "LOCAL-MID"), "FreeResult(answer 1)", DeleteCall("GUID-1", "LOCAL-MID", ""),
                     ReportCall({.guids = {"GUID-1"}, .type = "", .block = false})}));
}

TEST_F(RuleLoop, TheMachineIdThatWasSetGoesToQueryAndDeletion) {
    AddRule("GUID-1", "TYPE-1");
    host.answer = AnswerText("GUID-1", {"MID-1"});
    Allow("MID-1", {"TYPE-1"});
    char mid[] = "ID \"\\\xC3\xA4\xFF";
    ASSERT_TRUE(receiver->SetProperty(PROP_MID, mid, 1));
    Decide();
    EXPECT_EQ(TakeCalls(),
              (Lines{QueryCall({"GUID-1"}, mid), "FreeResult(answer 1)", DeleteCall("GUID-1", mid, "TYPE-1"),
                     ReportCall({.guids = {"GUID-1"}, .type = "TYPE-1", .block = false})}));
}

TEST_F(RuleLoop, InvalidUtf8PassesUnchangedIntoRequestDeletionAndReport) {
    const std::string guid = "\xC3\xFF";
    const std::string type = "\xED\xA0\x80";
    AddRule(guid, type);
    host.answer = AnswerText(guid, {"\x80"});
    Allow("\x80", {type});
    EXPECT_EQ(Decide(), (Verdict{true, REPLY_ALLOW}));
    EXPECT_EQ(TakeCalls(),
              (Lines{QueryCall({guid}, "LOCAL-MID"), "FreeResult(answer 1)", DeleteCall(guid, "LOCAL-MID", type),
                     ReportCall({.guids = {guid}, .type = type, .block = false})}));
}

TEST_F(RuleLoop, TheAllowListIsLookedAtForEachRuleAsItStandsThen) {
    AddThreeRules();
    Allow("MID-9", {"TYPE-9"});
    host.onQuery = [this] { receiver->SetAllowList(AllowText("MID-3", {"TYPE-3"}).c_str()); };
    EXPECT_EQ(Decide(), (Verdict{true, REPLY_ALLOW}));
    EXPECT_EQ(sink.Reports(), (Lines{ExpectedReport{.guids = {"GUID-3"}, .type = "TYPE-3", .block = false}.Text()}));
}

TEST_F(RuleLoop, AnEmptyAllowListBlocksWithAnErrorRecord) {
    AddRule("GUID-1", "TYPE-1");
    host.answer = AnswerText("GUID-1", {"MID-1", "MID-2"});
    EXPECT_EQ(Decide(), (Verdict{false, REPLY_BLOCK}));
    EXPECT_EQ(TakeRecords(),
              Joined({{inHandleEvent.Trace("==>enter"), inHandleEvent.Trace("query dot result_json=" + *host.answer),
                       inParseQueryResult.Trace("guid is:GUID-1"), inParseQueryResult.Trace("get mid=MID-1"),
                       inParseQueryResult.Trace("get mid=MID-2"),
                       inIsMatchmid.Error("CMordRecv::IsMatchmid failallow_list_size:0query_mids_size:2"),
                       inHandleEventInner.Trace("not match any mid,guid:GUID-1,reply:0")},
                      ReportRecords({.guids = {"GUID-1"}, .type = "TYPE-1"})}));
}

} // namespace
