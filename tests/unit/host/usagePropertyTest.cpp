// Random policies and recordings: what is unused can be removed, and suggested entries allow what they name. The
// library judges.
#include <algorithm>
#include <iostream>

#include <gtest/gtest.h>

#include "kit/text/runSeed.h"
#include "policy/memoryDotStore.h"
#include "unit/host/randomRecording.h"
#include "usage/draft.h"
#include "usage/policyUse.h"
#include "usage/suggester.h"

using namespace mordhost;
using namespace mordhostTest;

namespace {

constexpr uint64_t cases = MORDHOST_USAGE_CASES;

template <typename Part>
void Erase(std::vector<Part>& parts, const std::set<size_t>& indexes) {
    for (auto index = indexes.rbegin(); index != indexes.rend(); ++index) {
        parts.erase(parts.begin() + static_cast<std::ptrdiff_t>(*index));
    }
}

// The policy without those unused parts for which `isRemoved` returns true.
template <typename IsRemoved>
Policy Without(Policy policy, const PolicyUse& use, IsRemoved isRemoved) {
    std::set<size_t> removed[policyPartCount];
    for (const PartUse& part : use.Parts()) {
        if (!part.IsUsed() && isRemoved()) {
            removed[static_cast<size_t>(part.part)].insert(part.index);
            if (part.part == PolicyPart::dot) {
                policy.dots.erase(std::string(part.guid));
            }
        }
    }
    Erase(policy.rules, removed[0]);
    Erase(policy.allowListEntries, removed[1]);
    Erase(policy.actionRows, removed[2]);
    WriteDocuments(policy);
    return policy;
}

bool IsAllow(const std::string& verdict) {
    return verdict.starts_with("allow");
}

std::set<size_t> LinesOf(const EventSample& sample) {
    std::set<size_t> lines;
    for (const NamedEvent& event : sample.First()) {
        lines.insert(event.line);
    }
    EXPECT_EQ(lines.size(), sample.Count());
    return lines;
}

// For the message of a failure.
std::string TextOf(const Policy& policy) {
    std::string text = "mode " + std::to_string(policy.defenderMode.value_or(0)) + ' ' + policy.allowList->text + ' ' +
                       policy.actions->text;
    for (const Rule& rule : policy.rules) {
        text += "\nrule '" + rule.guid + "' '" + rule.type + "'";
    }
    return text + '\n' + DotsText(policy.dots);
}

} // namespace

TEST(UsageProperty, RemovingUnusedPartsChangesNoVerdict) {
    size_t unused[policyPartCount] = {};
    size_t used[policyPartCount] = {};
    for (uint64_t i = 0; i < cases && !HasFailure(); ++i) {
        RandomCase random(kit::RunSeed() + i);
        const Policy policy = random.MakePolicy();
        const std::vector<ConnectionEvent> events = random.MakeEvents();
        PolicyUse use(policy);
        std::vector<std::string> verdicts;
        {
            MemoryDotStore store(policy.dots);
            DecisionSession session(policy, store, RealLibrary());
            for (ConnectionEvent event : events) {
                const Decision& decision = session.Decide(std::move(event));
                use.Add(decision);
                verdicts.push_back(VerdictOf(decision));
            }
        }
        EXPECT_EQ(use.Events(), events.size());
        for (const PartUse& part : use.Parts()) {
            ++(part.IsUsed() ? used : unused)[static_cast<size_t>(part.part)];
        }
        EXPECT_EQ(VerdictsOf(Without(policy, use, [] { return true; }), events), verdicts) << i << TextOf(policy);
        EXPECT_EQ(VerdictsOf(Without(policy, use, [&] { return random.OneOf(2); }), events), verdicts)
            << i << TextOf(policy);
    }
    for (size_t part = 0; part < policyPartCount; ++part) { // the cases exercise each
        EXPECT_GT(unused[part], cases / 10);
        EXPECT_GT(used[part], cases / 10);
    }
}

TEST(UsageProperty, SuggestedEntriesAllowExactlyTheEventsThatTheyName) {
    size_t entries = 0;
    size_t also = 0;
    size_t noLonger = 0;
    size_t morePasses = 0;
    for (uint64_t i = 0; i < cases && !HasFailure(); ++i) {
        RandomCase random(kit::RunSeed() + i);
        const Policy policy = random.MakePolicy();
        const std::vector<ConnectionEvent> events = random.MakeEvents();
        MemoryRecording recording(events);
        Suggestions found;
        {
            TrialSession session(policy, RealLibrary());
            found = Suggester(policy, session, recording, events.size()).Run();
        }
        std::set<size_t> named = LinesOf(found.alsoAllowed);
        Policy applied = policy;
        for (const Suggestion& entry : found.entries) {
            EXPECT_GT(entry.events.Count(), 0U);
            named.merge(LinesOf(entry.events));
            applied.allowListEntries.push_back({entry.machine, entry.key, {}, {}});
        }
        WriteDocuments(applied);
        const std::vector<std::string> before = VerdictsOf(policy, events);
        const std::vector<std::string> after = VerdictsOf(applied, events);
        std::set<size_t> becameAllowed;
        std::set<size_t> becameBlocked;
        for (size_t event = 0; event < events.size(); ++event) {
            if (IsAllow(before[event]) != IsAllow(after[event])) {
                (IsAllow(after[event]) ? becameAllowed : becameBlocked).insert(events[event].line);
            }
        }
        EXPECT_EQ(named, becameAllowed) << i << TextOf(policy);
        EXPECT_EQ(LinesOf(found.noLongerAllowed), becameBlocked) << i << TextOf(policy);
        EXPECT_EQ(found.events, events.size());
        EXPECT_EQ(found.allowedBefore, static_cast<size_t>(std::count_if(before.begin(), before.end(), IsAllow)));
        EXPECT_EQ(found.allowedAfter, static_cast<size_t>(std::count_if(after.begin(), after.end(), IsAllow)));
        entries += found.entries.size();
        also += found.alsoAllowed.Count();
        noLonger += found.noLongerAllowed.Count();
        morePasses += recording.rewinds > 2 ? 1 : 0;
    }
    EXPECT_GT(entries, cases / 10);
    // Rare cases, which a small number of cases may lack.
    EXPECT_GE(also + noLonger, cases / 1000);
    EXPECT_GE(morePasses, cases / 50);
    std::cout << entries << " entries, side effects: " << also << " and " << noLonger
              << " events, more passes: " << morePasses << " cases\n";
}
