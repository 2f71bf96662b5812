// The messages are those of the library, word for word.
#include "decide/reason.h"

#include <gtest/gtest.h>

using namespace mordhost;

namespace {

std::string Reason(const std::vector<std::string>& messages, const std::string& matchedType = "") {
    return ReasonOf({messages.begin(), messages.end()}, matchedType);
}

constexpr auto noDot = "query dot result is empty, reply=0,rule guidG1";
constexpr auto emptyDot = "query dot result mid is empty, reply=0,rule guidG1";
constexpr auto noMatch = "not match any mid,guid:G1,reply:0";
constexpr auto emptyList = "CMordRecv::IsMatchmid failallow_list_size:0query_mids_size:1";
constexpr auto notStarted = "receving end not start";
constexpr auto modeFour = "defender mode=4";
constexpr auto action = "type=ssh,defender mode=3,action=1";

} // namespace

TEST(Reason, EmergencyAllowsEverything) {
    EXPECT_EQ(Reason({"==>enter", "defender mode is emergency", "==>enter", "emergency mode not report"}),
              "emergency mode allows everything");
}

TEST(Reason, ADisconnectIsADisconnect) {
    EXPECT_EQ(Reason({"==>enter", "==>enter", "disconnect event not report"}), "disconnect");
}

TEST(Reason, TheExceptionModeDecidesANetworkError) {
    EXPECT_EQ(Reason({"query dot result_json=", "query dot network error, exception_mode=1 ,reply=1"}),
              "network error, exception mode allows");
    EXPECT_EQ(Reason({"query dot result_json=", "query dot network error, exception_mode=2 ,reply=0"}),
              "network error, exception mode blocks");
}

TEST(Reason, AQueryFailsInThreeWays) {
    EXPECT_EQ(Reason({" query dot error, reply=0"}), "query error");
    EXPECT_EQ(Reason({"data format error.", " query dot error, reply=0"}), "broken answer to the query");
    EXPECT_EQ(Reason({"param error", " query dot error, reply=0"}), "empty answer to the query");
}

TEST(Reason, AllForbidBlocks) {
    EXPECT_EQ(Reason({" defender mode is all forbid, reply=0"}), "all-forbid mode blocks");
}

TEST(Reason, AMatchNamesTheMachineAndTheRule) {
    EXPECT_EQ(Reason({"match mid=MID-7,rule guid=G1,reply:1", "del dot,ret=1,rule guidG1"}, "smb"),
              "machine MID-7 is allowed for smb, its dot is deleted");
    EXPECT_EQ(Reason({"match mid=MID-7,rule guid=G1,reply:1", "del dot,ret=1,rule guidG1"}, "web"),
              "machine MID-7 is allowed for web rule G1, its dot is deleted");
}

TEST(Reason, AMatchIsReadCorrectlyWithAnyText) {
    EXPECT_EQ(Reason({"match mid=a,reply:0,rule guid=b,reply:1,reply:1"}, "web"),
              "machine a,reply:0 is allowed for web rule b,reply:1");
}

TEST(Reason, ADotThatCouldNotBeDeletedIsReported) {
    EXPECT_EQ(Reason({"match mid=M,rule guid=G1,reply:1", "del dot,ret=0,rule guidG1"}, "smb"),
              "machine M is allowed for smb, its dot could not be deleted");
}

TEST(Reason, ARuleFailsInFiveWays) {
    EXPECT_EQ(Reason({noDot}), "no dot is held");
    EXPECT_EQ(Reason({emptyDot}), "the dot names no machine");
    EXPECT_EQ(Reason({emptyList, noMatch}), "the allow list is empty");
    EXPECT_EQ(Reason({"CMordRecv::IsMatchmid fail end", noMatch}), "no allowed machine holds a dot");
    EXPECT_EQ(Reason({notStarted}), "the receiver is not started");
}

TEST(Reason, OfSeveralRulesTheOneThatCameFurthestCounts) {
    EXPECT_EQ(Reason({noDot, emptyDot}), "the dot names no machine");
    EXPECT_EQ(Reason({noMatch, noDot, emptyDot}), "no allowed machine holds a dot");
    EXPECT_EQ(Reason({noDot, emptyList, noMatch}), "the allow list is empty");
}

TEST(Reason, ALaterMatchOverridesEarlierFailures) {
    EXPECT_EQ(Reason({noDot, noMatch, "match mid=M,rule guid=G1,reply:1"}, "ssh"), "machine M is allowed for ssh");
}

TEST(Reason, AMalformedAnswerOverridesAMissingDot) {
    EXPECT_EQ(Reason({"guid is:G1", "The down_packet (value)data errror", noDot}), "malformed answer to the query");
    EXPECT_EQ(Reason({"guid is:G1", "The down_packet (mid)data error", noDot}), "malformed answer to the query");
    EXPECT_EQ(Reason({"guid is:G2", "The down_packet (mid)data error", noMatch}), "no allowed machine holds a dot");
}

TEST(Reason, WhatOverrulesABlockComesFirst) {
    EXPECT_EQ(Reason({noDot, action}), "action table lets type ssh pass (no dot is held)");
    EXPECT_EQ(Reason({noMatch, modeFour}), "allow-after-decision mode lets it pass (no allowed machine holds a dot)");
    EXPECT_EQ(Reason({" query dot error, reply=0", modeFour}), "allow-after-decision mode lets it pass (query error)");
    EXPECT_EQ(Reason({"query dot network error, exception_mode=2 ,reply=0", action}),
              "action table lets type ssh pass (network error, exception mode blocks)");
}

TEST(Reason, AnAllowIsNotOverruled) {
    EXPECT_EQ(Reason({"match mid=M,rule guid=G1,reply:1", action}, "ssh"), "machine M is allowed for ssh");
    EXPECT_EQ(Reason({"match mid=M,rule guid=G1,reply:1", modeFour}, "ssh"), "machine M is allowed for ssh");
    EXPECT_EQ(Reason({"query dot network error, exception_mode=1 ,reply=1", modeFour}),
              "network error, exception mode allows");
    EXPECT_EQ(Reason({modeFour, "==>enter", "disconnect event not report"}), "disconnect");
}

TEST(Reason, ATypeMayBeAnyText) {
    EXPECT_EQ(Reason({noDot, "type=a,defender mode=3,action=1,defender mode=3,action=1"}),
              "action table lets type a,defender mode=3,action=1 pass (no dot is held)");
}

TEST(Reason, IsEmptyWithoutKnownRecords) {
    EXPECT_EQ(Reason({}), "");
    EXPECT_EQ(Reason({"==>enter", "something new", "==>leave"}), "");
}
