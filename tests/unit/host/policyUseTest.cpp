// What decisions mark as used.
#include "usage/policyUse.h"

#include <gtest/gtest.h>

#include "frame/values.h"
#include "unit/host/randomRecording.h"
#include "usage/suggester.h"

using namespace mordhost;
using namespace mordhostTest;

namespace {

constexpr uint32_t noSpecialMode = 2;

// Two rules of each kind of key, equal entries, rows for one type, and dots that are not in the order of their guids.
Policy TestPolicy() {
    Policy policy;
    policy.machineId = "HERE";
    policy.defenderMode = MODE_ACTION_TABLE;
    policy.rules.resize(3);
    policy.rules[0] = {"G1", "smb", {}, {}, {}, {}};
    policy.rules[1] = {"G2", "web", {}, {}, {}, {}};
    policy.rules[2] = {"G3", "smb", {{9, 9}}, {}, {}, {}};
    policy.allowListEntries = {{"M", "G2", {}, {}}, {"M", "smb", {}, {}}, {"M", "smb", {}, {}}, {"M", "web", {}, {}}};
    policy.actionRows = {{"smb", 1, {}}, {"smb", 0, {}}, {"web", 1, {}}};
    policy.dots = {{"G1", {"M"}}, {"G2", {"M"}}, {"other", {"M"}}};
    policy.dotPlaces["G1"].offset = 30;
    policy.dotPlaces["G2"].offset = 20;
    policy.dotPlaces["other"].offset = 10;
    return policy;
}

// The decision on an event to which the first two rules apply.
Decision Decided(uint32_t reply, ReasonCode code, std::vector<RuleOutcome> outcomes = {}) {
    Decision decision;
    decision.rules = {0, 1};
    decision.asked = true;
    decision.reply = reply;
    decision.reason = {code, "", {}, std::move(outcomes)};
    return decision;
}

// The numbers of events: "rules/entries/rows/dots".
std::string UsesAfter(const Decision& decision) {
    const Policy policy = TestPolicy();
    PolicyUse use(policy);
    use.Add(decision);
    std::string uses;
    PolicyPart last = PolicyPart::rule;
    for (const PartUse& part : use.Parts()) {
        uses += part.part == last ? "" : "/";
        uses += std::to_string(part.events);
        last = part.part;
    }
    return uses;
}

ConnectionEvent OnPort(uint16_t port, size_t line) {
    ConnectionEvent event;
    event.localPort = port;
    event.remoteAddress = "192.0.2.7";
    event.line = line;
    event.pid = 4;
    return event;
}

Suggestions SuggestFor(Policy policy, const std::vector<ConnectionEvent>& events, size_t most = 10) {
    WriteDocuments(policy);
    MemoryRecording recording(events);
    TrialSession session(policy, RealLibrary());
    return Suggester(policy, session, recording, most).Run();
}

std::string PairsOf(const std::vector<Suggestion>& entries) {
    std::string pairs;
    for (const Suggestion& entry : entries) {
        pairs += entry.machine + '@' + entry.key + '=' + std::to_string(entry.events.Count()) + ' ';
    }
    return pairs;
}

// A rule on the port, with a dot.
void AddRule(Policy& policy, const char* guid, const char* type, uint16_t port, const std::set<std::string>& machines) {
    policy.machineId = "HERE";
    policy.defenderMode = noSpecialMode;
    policy.rules.push_back({guid, type, {{port, port}}, {}, {}, {}});
    policy.dots[guid] = machines;
}

// Two entries would each take the dot of the other's event.
Policy PolicyOfOneDot() {
    Policy policy;
    AddRule(policy, "G", "a", 1, {"M"});
    policy.rules.push_back({"G", "web", {{2, 2}}, {}, {}, {}});
    policy.allowListEntries = {{"M", "G", {}, {}}};
    return policy;
}

} // namespace

TEST(PolicyUse, MarksWhatTheDecisionNeeds) {
    constexpr auto outcome = ReasonCode::machineAllowed;
    Decision inOtherMode = Decided(REPLY_BLOCK, ReasonCode::noDot);
    inOtherMode.mode = noSpecialMode;
    Decision inMode = Decided(REPLY_BLOCK, ReasonCode::noDot);
    inMode.mode = MODE_ACTION_TABLE;
    Decision notAsked;
    const std::pair<Decision, std::string> cases[] = {
        // The matched rule, the first of equal entries under its key, its dot.
        {Decided(REPLY_ALLOW, outcome, {{0, outcome, "M"}}), "100/0100/000/001"},
        {Decided(REPLY_ALLOW_FLAGGED, outcome, {{0, ReasonCode::noDot, ""}, {1, outcome, "M"}}), "010/1000/000/010"},
        // An entry that the list does not have.
        {Decided(REPLY_ALLOW, outcome, {{0, outcome, "N"}}), "100/0000/000/001"},
        // The first rule and the row in force for its type, whatever its action and whether it lets pass.
        {Decided(REPLY_BLOCK, ReasonCode::noDot, {{0, ReasonCode::noDot, ""}, {1, ReasonCode::noDot, ""}}),
         "100/0000/010/000"},
        {Decided(REPLY_ALLOW, ReasonCode::actionTable), "100/0000/010/000"},
        {inMode, "100/0000/010/000"},
        // No row is looked up for an allow and in other modes.
        {Decided(REPLY_ALLOW, ReasonCode::networkErrorAllowed), "100/0000/000/000"},
        {inOtherMode, "100/0000/000/000"},
        {Decided(REPLY_ALLOW, ReasonCode::disconnect), "100/0000/000/000"},
        {notAsked, "000/0000/000/000"},
    };
    for (const auto& [decision, uses] : cases) {
        EXPECT_EQ(UsesAfter(decision), uses) << NameOf(decision.reason.code);
    }
}

TEST(PolicyUse, ListsThePartsInDocumentOrderWithTheirShares) {
    const Policy policy = TestPolicy();
    PolicyUse use(policy);
    use.Add(Decided(REPLY_BLOCK, ReasonCode::noDot));
    use.Add(Decided(REPLY_ALLOW, ReasonCode::machineAllowed, {{0, ReasonCode::machineAllowed, "M"}}));
    const std::vector<PartUse>& parts = use.Parts();
    EXPECT_EQ(use.Events(), 2U);
    EXPECT_EQ(parts[0].events, 2U);
    EXPECT_EQ(parts[1].applied, 2U);
    EXPECT_EQ(parts[1].events, 0U);
    EXPECT_EQ(parts[2].applied, 0U);
    EXPECT_EQ(std::string(parts[10].guid) + ' ' + std::string(parts[11].guid) + ' ' + std::string(parts[12].guid),
              "other G2 G1");
    EXPECT_EQ(parts[12].index, 2U);
    const std::pair<size_t, size_t> shares[] = {{1, 3}, {1, 4}, {1, 3}, {1, 3}};
    for (const PolicyPart part :
         {PolicyPart::rule, PolicyPart::allowListEntry, PolicyPart::actionRow, PolicyPart::dot}) {
        const UseShare share = use.Share(part);
        EXPECT_EQ(std::make_pair(share.used, share.total), shares[static_cast<size_t>(part)]);
    }
}

TEST(Suggester, SuggestsTheLeastMachineOfTheFirstRuleUnderItsKey) {
    Policy policy;
    AddRule(policy, "G1", "a", 1, {});
    AddRule(policy, "G2", "web", 1, {"O", "N", "M", "P", "Q"});
    AddRule(policy, "G3", "a", 1, {"M"});
    const Suggestions found = SuggestFor(policy, {OnPort(1, 7), OnPort(5, 8)});
    ASSERT_EQ(PairsOf(found.entries), "M@G2=1 ");
    EXPECT_EQ(found.entries[0].alternatives, (std::vector<std::string>{"N", "O", "P"}));
    EXPECT_EQ(found.entries[0].events.First(), (std::vector<NamedEvent>{{"memory", 7, "", "192.0.2.7", 1}}));
    EXPECT_EQ(found.withoutRule, 1U);
}

TEST(Suggester, UsesAnEntryThatItSuggestsAlready) {
    Policy policy;
    AddRule(policy, "G1", "a", 1, {"N"});
    AddRule(policy, "G2", "a", 2, {"M", "N"});
    EXPECT_EQ(PairsOf(SuggestFor(policy, {OnPort(1, 1), OnPort(2, 2)}).entries), "N@a=2 ");
}

TEST(Suggester, NamesTheEventsThatLoseTheirDot) {
    const Suggestions found = SuggestFor(PolicyOfOneDot(), {OnPort(1, 1), OnPort(2, 2)});
    EXPECT_EQ(PairsOf(found.entries), "M@a=1 ");
    ASSERT_EQ(found.noLongerAllowed.Count(), 1U);
    EXPECT_EQ(found.noLongerAllowed.First()[0].line, 2U);
    EXPECT_EQ(found.allowedBefore, 1U);
    EXPECT_EQ(found.allowedAfter, 1U);
    EXPECT_EQ(found.blocked, (std::map<ReasonCode, size_t>{{ReasonCode::noDot, 1}}));
}

TEST(Suggester, SuggestsNothingThatAllowsNoEvent) {
    // The dot is used before the event of the other type.
    EXPECT_EQ(PairsOf(SuggestFor(PolicyOfOneDot(), {OnPort(2, 1), OnPort(1, 2)}).entries), "");
    Policy policy;
    AddRule(policy, "G", "a", 1, {"M"});
    policy.defenderMode = MODE_ALL_FORBID;
    EXPECT_EQ(PairsOf(SuggestFor(policy, {OnPort(1, 1)}).entries), "");
    policy.defenderMode = MODE_ALLOW_AFTER_DECISION;
    EXPECT_EQ(PairsOf(SuggestFor(policy, {OnPort(1, 1)}).entries), "");
}

TEST(Suggester, CountsAllEventsAndKeepsTheFirst) {
    Policy policy;
    std::vector<ConnectionEvent> events;
    for (const char* const guid : {"A", "B", "C", "D"}) {
        const auto port = static_cast<uint16_t>(guid[0]);
        AddRule(policy, guid, "a", port, {"M"});
        events.push_back(OnPort(port, port));
    }
    const Suggestions found = SuggestFor(policy, events, 2);
    ASSERT_EQ(PairsOf(found.entries), "M@a=4 ");
    ASSERT_EQ(found.entries[0].events.First().size(), 2U);
    EXPECT_EQ(found.entries[0].events.First()[1].line, static_cast<size_t>('B'));
}
