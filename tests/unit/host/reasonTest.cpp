// The messages are those of the library, word for word.
#include "decide/reason.h"

#include <set>

#include <gtest/gtest.h>

using namespace mordhost;

namespace {

using Messages = std::vector<std::string>;

std::vector<Rule> Rules() {
    std::vector<Rule> rules(4);
    rules[0].guid = "other"; // does not apply to the event
    rules[1].guid = "G1";
    rules[1].type = "ssh";
    rules[2].guid = "G2";
    rules[2].type = "web";
    rules[3].guid = "b,reply:1,rule guid=b,reply:1";
    rules[3].type = "web";
    return rules;
}

// The reason in the memory of an earlier one.
Reason Found(const Messages& messages) {
    const std::vector<Rule> rules = Rules();
    const std::vector<size_t> selected = {1, 2, 3};
    const RuleOutcome earlier{7, ReasonCode::noDot, "earlier"};
    Reason reason{ReasonCode::noRule, "earlier", ReasonCode::noDot, {earlier, earlier, earlier, earlier}};
    FindReason({messages.begin(), messages.end()}, {rules, selected}, reason);
    return reason;
}

// "CODE: TEXT", and " < CODE" for the overruled block.
std::string Why(const Messages& messages) {
    const Reason reason = Found(messages);
    return std::string(NameOf(reason.code)) + ": " + reason.text +
           (reason.overruled ? " < " + std::string(NameOf(*reason.overruled)) : "");
}

constexpr auto noDot = "query dot result is empty, reply=0,rule guidG1";
constexpr auto noDot2 = "query dot result is empty, reply=0,rule guidG2";
constexpr auto emptyDot2 = "query dot result mid is empty, reply=0,rule guidG2";
constexpr auto emptyDot = "query dot result mid is empty, reply=0,rule guidG1";
constexpr auto noMatch = "not match any mid,guid:G1,reply:0";
constexpr auto emptyList = "CMordRecv::IsMatchmid failallow_list_size:0query_mids_size:1";
constexpr auto notStarted = "receving end not start";
constexpr auto modeFour = "defender mode=4";
constexpr auto action = "type=ssh,defender mode=3,action=1";

} // namespace

TEST(Reason, EmergencyAllowsEverything) {
    EXPECT_EQ(Why({"==>enter", "defender mode is emergency", "==>enter", "emergency mode not report"}),
              "emergency-mode: emergency mode allows everything");
}

TEST(Reason, ADisconnectIsADisconnect) {
    EXPECT_EQ(Why({"==>enter", "==>enter", "disconnect event not report"}), "disconnect: disconnect");
}

TEST(Reason, TheExceptionModeDecidesANetworkError) {
    EXPECT_EQ(Why({"query dot result_json=", "query dot network error, exception_mode=1 ,reply=1"}),
              "network-error-allowed: network error, exception mode allows");
    EXPECT_EQ(Why({"query dot result_json=", "query dot network error, exception_mode=2 ,reply=0"}),
              "network-error-blocked: network error, exception mode blocks");
}

TEST(Reason, AQueryFailsInThreeWays) {
    EXPECT_EQ(Why({" query dot error, reply=0"}), "query-error: query error");
    EXPECT_EQ(Why({"data format error.", " query dot error, reply=0"}), "broken-answer: broken answer to the query");
    EXPECT_EQ(Why({"param error", " query dot error, reply=0"}), "empty-answer: empty answer to the query");
}

TEST(Reason, AllForbidBlocks) {
    EXPECT_EQ(Why({" defender mode is all forbid, reply=0"}), "all-forbid-mode: all-forbid mode blocks");
}

TEST(Reason, AMatchNamesTheMachineAndTheRule) {
    EXPECT_EQ(Why({"match mid=MID-7,rule guid=G1,reply:1", "del dot,ret=1,rule guidG1"}),
              "machine-allowed: machine MID-7 is allowed for ssh, its dot is deleted");
    EXPECT_EQ(Why({"match mid=MID-7,rule guid=G2,reply:1", "del dot,ret=1,rule guidG2"}),
              "machine-allowed: machine MID-7 is allowed for web rule G2, its dot is deleted");
}

TEST(Reason, AMatchIsReadCorrectlyWithAnyText) {
    const std::string guid = Rules()[3].guid;
    const Messages messages = {"match mid=a,rule guid=x,reply:0,rule guid=" + guid + ",reply:1"};
    EXPECT_EQ(Why(messages), "machine-allowed: machine a,rule guid=x,reply:0 is allowed for web rule " + guid);
    ASSERT_EQ(Found(messages).rules.size(), 1U);
    EXPECT_EQ(Found(messages).rules[0].machine, "a,rule guid=x,reply:0");
}

TEST(Reason, ADotThatCouldNotBeDeletedIsReported) {
    EXPECT_EQ(Why({"match mid=M,rule guid=G1,reply:1", "del dot,ret=0,rule guidG1"}),
              "machine-allowed-dot-kept: machine M is allowed for ssh, its dot could not be deleted");
}

TEST(Reason, ARuleFailsInFiveWays) {
    EXPECT_EQ(Why({noDot}), "no-dot: no dot is held");
    EXPECT_EQ(Why({emptyDot}), "dot-names-no-machine: the dot names no machine");
    EXPECT_EQ(Why({emptyList, noMatch}), "allow-list-empty: the allow list is empty");
    EXPECT_EQ(Why({"CMordRecv::IsMatchmid fail end", noMatch}), "no-allowed-machine: no allowed machine holds a dot");
    EXPECT_EQ(Why({notStarted}), "receiver-not-started: the receiver is not started");
}

TEST(Reason, OfSeveralRulesTheOneThatCameFurthestCounts) {
    EXPECT_EQ(Why({noDot, emptyDot2}), "dot-names-no-machine: the dot names no machine");
    EXPECT_EQ(Why({noMatch, noDot2}), "no-allowed-machine: no allowed machine holds a dot");
    EXPECT_EQ(Why({noDot, emptyList, "not match any mid,guid:G2,reply:0"}),
              "allow-list-empty: the allow list is empty");
}

TEST(Reason, ALaterMatchOverridesEarlierFailures) {
    EXPECT_EQ(Why({noDot, "match mid=M,rule guid=G2,reply:1"}),
              "machine-allowed: machine M is allowed for web rule G2");
}

TEST(Reason, AMalformedAnswerOverridesAMissingDot) {
    EXPECT_EQ(Why({"guid is:G1", "The down_packet (value)data errror", noDot}),
              "malformed-answer: malformed answer to the query");
    EXPECT_EQ(Why({"guid is:G1", "The down_packet (mid)data error", noDot}),
              "malformed-answer: malformed answer to the query");
    EXPECT_EQ(Why({"guid is:G2", "The down_packet (mid)data error", noMatch}),
              "no-allowed-machine: no allowed machine holds a dot");
}

TEST(Reason, WhatOverrulesABlockComesFirst) {
    EXPECT_EQ(Why({noDot, action}), "action-table: action table lets type ssh pass (no dot is held) < no-dot");
    EXPECT_EQ(Why({noMatch, modeFour}),
              "after-decision-mode: allow-after-decision mode lets it pass (no allowed machine holds a dot) < "
              "no-allowed-machine");
    EXPECT_EQ(Why({" query dot error, reply=0", modeFour}),
              "after-decision-mode: allow-after-decision mode lets it pass (query error) < query-error");
    EXPECT_EQ(Why({"query dot network error, exception_mode=2 ,reply=0", action}),
              "action-table: action table lets type ssh pass (network error, exception mode blocks) < "
              "network-error-blocked");
}

TEST(Reason, AnAllowIsNotOverruled) {
    EXPECT_EQ(Why({"match mid=M,rule guid=G1,reply:1", action}), "machine-allowed: machine M is allowed for ssh");
    EXPECT_EQ(Why({"match mid=M,rule guid=G1,reply:1", modeFour}), "machine-allowed: machine M is allowed for ssh");
    EXPECT_EQ(Why({"query dot network error, exception_mode=1 ,reply=1", modeFour}),
              "network-error-allowed: network error, exception mode allows");
    EXPECT_EQ(Why({modeFour, "==>enter", "disconnect event not report"}), "disconnect: disconnect");
}

TEST(Reason, ATypeMayBeAnyText) {
    EXPECT_EQ(Why({noDot, "type=a,defender mode=3,action=1,defender mode=3,action=1"}),
              "action-table: action table lets type a,defender mode=3,action=1 pass (no dot is held) < no-dot");
}

TEST(Reason, IsUnknownWithoutKnownRecords) {
    EXPECT_EQ(Why({}), "unknown: ");
    EXPECT_EQ(Why({"==>enter", "something new", "==>leave"}), "unknown: ");
    EXPECT_TRUE(Found({}).rules.empty());
}

TEST(RuleOutcomes, ListTheRulesThatTheLibraryLookedAt) {
    using Outcomes = std::vector<RuleOutcome>;
    EXPECT_EQ(Found({noDot, "match mid=M,rule guid=G2,reply:1", "del dot,ret=1,rule guidG2"}).rules,
              (Outcomes{{1, ReasonCode::noDot, ""}, {2, ReasonCode::machineAllowed, "M"}}));
    EXPECT_EQ(
        Found({emptyList, noMatch, emptyDot2, "query dot result is empty, reply=0,rule guid" + Rules()[3].guid}).rules,
        (Outcomes{
            {1, ReasonCode::allowListEmpty, ""}, {2, ReasonCode::dotNamesNoMachine, ""}, {3, ReasonCode::noDot, ""}}));
    EXPECT_EQ(Found({notStarted, notStarted, notStarted}).rules.back(),
              (RuleOutcome{3, ReasonCode::receiverNotStarted, ""}));
    EXPECT_TRUE(Found({"disconnect event not report"}).rules.empty());
}

TEST(RuleOutcomes, OneIsMissingIfItsRecordIsLost) {
    EXPECT_EQ(Found({noDot2}).rules, (std::vector<RuleOutcome>{{2, ReasonCode::noDot, ""}}));
    EXPECT_TRUE(Found({"query dot result is empty, reply=0,rule guidother"}).rules.empty());
}

TEST(ReasonCodes, HaveDifferentNamesInKebabCase) {
    std::set<std::string_view> names;
    for (const NamedReason& reason : ReasonCodes()) {
        EXPECT_TRUE(names.insert(reason.name).second) << reason.name;
        EXPECT_EQ(reason.name.find_first_not_of("abcdefghijklmnopqrstuvwxyz-"), std::string_view::npos) << reason.name;
        EXPECT_EQ(NameOf(reason.code), reason.name);
    }
    EXPECT_EQ(names.size(), 20U);
}
