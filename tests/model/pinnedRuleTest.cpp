// One rule of an event: its key in the allow list, and its matches.
#include "model/pinnedCase.h"

namespace {

using namespace model;

class PinnedRule : public PinnedCase {
protected:
    // The records of rule and match for one rule, with this allow list and answer.
    Lines RecordsOf(const std::string& allowList, const std::string& answer, RecordScript rule,
                    int32_t deleteResult = 0) {
        m_case = TestCase();
        MakeRunning();
        Do(AllowListOf(allowList));
        Do(NumberOf(8, 0));
        EventScript event = EventOf(0, {std::move(rule)}, answer);
        event.deleteResult = deleteResult;
        Do(HandlingOf(event));
        Lines records = Records();
        std::erase_if(records, [](const std::string& line) {
            return line.find("HandleEventInner") == std::string::npos && line.find("IsMatchmid") == std::string::npos;
        });
        return records;
    }
};

std::string Allow(const std::string& key, const std::string& mids) {
    std::string entries;
    for (const char mid : mids) {
        entries +=
            (entries.empty() ? "" : ",") + std::string("{\"mid\":\"") + mid + "\",\"protocol\":[\"" + key + "\"]}";
    }
    return "{\"mid_list\":[" + entries + "]}";
}

const std::string answerA = R"({"g":{"value":1,"mid":{"a":0}}})";
const std::string failEnd = TraceOf("IsMatchmid", "CMordRecv::IsMatchmid fail end");
const std::string notMatched = TraceOf("HandleEventInner", "not match any mid,guid:g,reply:0");

Lines MatchOf(const std::string& mid, const std::string& guid) {
    return {TraceOf("IsMatchmid", "CMordRecv::IsMatchmid success,mid_match_output matched" + mid),
            TraceOf("HandleEventInner", "match mid=" + mid + ",rule guid=" + guid + ",reply:1"),
            TraceOf("HandleEventInner", "del dot,ret=1,rule guid" + guid)};
}

TEST_F(PinnedRule, KeyIsTheGuidForWebAndTheTypeOtherwise) {
    EXPECT_EQ(RecordsOf(Allow("g", "a"), answerA, RuleRecord("g", "web")), MatchOf("a", "g"));
    EXPECT_EQ(RecordsOf(Allow("web", "a"), answerA, RuleRecord("g", "web")), (Lines{failEnd, notMatched}));
    EXPECT_EQ(RecordsOf(Allow("WEB", "a"), answerA, RuleRecord("g", "WEB")), MatchOf("a", "g"));
    EXPECT_EQ(RecordsOf(Allow("dns", "a"), answerA, RuleRecord("g", "dns")), MatchOf("a", "g"));
    EXPECT_EQ(RecordsOf(Allow("", "a"), answerA, RuleRecord("g", "")), MatchOf("a", "g"));
}

TEST_F(PinnedRule, MissingGuidOrMidsBlockBeforeTheListIsSearched) {
    EXPECT_EQ(RecordsOf("{\"mid_list\":[]}", answerA, RuleRecord("h", "dns")),
              (Lines{TraceOf("HandleEventInner", "query dot result is empty, reply=0,rule guidh")}));
    EXPECT_EQ(RecordsOf("{\"mid_list\":[]}", R"({"g":{"value":1,"mid":{}}})", RuleRecord("g", "dns")),
              (Lines{TraceOf("HandleEventInner", "query dot result mid is empty, reply=0,rule guidg")}));
}

TEST_F(PinnedRule, EmptyListLogsTheCountsOfKeysAndDistinctMids) {
    EXPECT_EQ(
        RecordsOf("{\"mid_list\":[]}", R"({"g":{"value":1,"mid":{"a":0,"b":0,"a":0}}})", RuleRecord("g", "dns")),
        (Lines{ErrorOf("IsMatchmid", "CMordRecv::IsMatchmid failallow_list_size:0query_mids_size:2"), notMatched}));
}

TEST_F(PinnedRule, MatchComparesWholeTexts) {
    EXPECT_EQ(RecordsOf(Allow("dns", "A"), answerA, RuleRecord("g", "dns")), (Lines{failEnd, notMatched}));
    EXPECT_EQ(RecordsOf(Allow("dns", "a"), R"({"g":{"value":1,"mid":{"ab":0,"":0}}})", RuleRecord("g", "dns")),
              (Lines{failEnd, notMatched}));
    EXPECT_EQ(RecordsOf(Allow("ssh", "a"), answerA, RuleRecord("g", "dns")), (Lines{failEnd, notMatched}));
}

TEST_F(PinnedRule, LogsTheLeastMatchByUnsignedBytes) {
    EXPECT_EQ(RecordsOf(Allow("dns", "cb"), R"({"g":{"value":1,"mid":{"c":0,"b":0}}})", RuleRecord("g", "dns")),
              MatchOf("b", "g"));
    EXPECT_EQ(RecordsOf(R"({"mid_list":[{"mid":"é","protocol":["dns"]},{"mid":"z","protocol":["dns"]}]})",
                        R"({"g":{"value":1,"mid":{"é":0,"z":0}}})", RuleRecord("g", "dns")),
              MatchOf("z", "g"));
}

TEST_F(PinnedRule, FailedDeletionChangesOnlyItsRecord) {
    Lines records = RecordsOf(Allow("dns", "a"), answerA, RuleRecord("g", "dns"), 1007);
    EXPECT_EQ(records.back(), TraceOf("HandleEventInner", "del dot,ret=0,rule guidg"));
    EXPECT_EQ(Outcome().back(), "= true reply 1 answers out 0");
}

TEST_F(PinnedRule, EmptyGuidIsAGuid) {
    EXPECT_EQ(RecordsOf(Allow("dns", "a"), R"({"":{"value":1,"mid":{"a":0}}})", RecordScript()),
              (Lines{failEnd, TraceOf("HandleEventInner", "not match any mid,guid:,reply:0")}));
    EXPECT_EQ(RecordsOf(Allow("dns", "a"), R"({"":{"value":1,"mid":{"a":0}}})", RuleRecord("", "dns")),
              MatchOf("a", ""));
}

TEST_F(PinnedRule, TextsAreReadWithTwoCalls) {
    const auto with = [](TextScript text) {
        RecordScript rule = RuleRecord("g", "dns");
        rule.texts["guid"] = std::move(text);
        return rule;
    };
    const Lines unread = {TraceOf("HandleEventInner", "query dot result is empty, reply=0,rule guid")};
    TextScript text = DeliveredText("g");
    text.firstResult = 0;
    EXPECT_EQ(RecordsOf(Allow("dns", "a"), answerA, with(text)), unread);
    text = DeliveredText("g");
    text.firstSize = -2;
    EXPECT_EQ(RecordsOf(Allow("dns", "a"), answerA, with(text)), unread);
    text = DeliveredText("g");
    text.secondResult = 201;
    EXPECT_EQ(RecordsOf(Allow("dns", "a"), answerA, with(text)), unread);
    text = DeliveredText("g");
    text.bytes = "gx"; // fills a buffer of one byte, without a NUL
    text.firstSize = 1;
    EXPECT_EQ(RecordsOf(Allow("dns", "a"), answerA, with(text)), MatchOf("a", "g"));
    text = DeliveredText("g");
    text.bytes += "more";
    text.firstSize = 300;
    text.secondSize = -1;
    EXPECT_EQ(RecordsOf(Allow("dns", "a"), answerA, with(text)), MatchOf("a", "g"));
}

} // namespace
