// Random policies and recordings: a comparison equals the comparison of two replays, and a rehearsal equals replays of
// the policies with the modes and failures that it names.
#include <set>

#include <gtest/gtest.h>

#include "compare/comparison.h"
#include "compare/localSide.h"
#include "compare/rehearsal.h"
#include "compare/remoteSide.h"
#include "kit/text/runSeed.h"
#include "policy/policyReader.h"
#include "system/filePath.h"
#include "unit/host/randomComparison.h"

using namespace mordhost;
using mordhostTest::RandomComparison;

namespace {

// A decision of a replay.
struct Replayed {
    std::string verdict;
    Reason reason;
    std::string record;
    std::optional<std::string> deleted;
    uint32_t reply = 0;

    bool Equals(const Replayed& other) const {
        return verdict == other.verdict && reason.code == other.reason.code && reason.text == other.reason.text &&
               reason.overruled == other.reason.overruled;
    }
};

std::vector<Replayed> ReplayOf(const Policy& policy, const std::vector<ConnectionEvent>& events,
                               std::optional<Failure> dotsDown = std::nullopt, bool logging = true) {
    MemoryDotStore store(policy.dots);
    DecisionSession session(policy, store, {MORDHOST_LIBRARY_DIRECTORY, logging, dotsDown, UtcNow});
    const DecisionRecords records(policy, {session.LibraryVersion(), "test", false});
    std::vector<Replayed> decisions;
    for (const ConnectionEvent& event : events) {
        const Decision& decision = session.Decide(ConnectionEvent(event));
        Replayed& replayed = decisions.emplace_back();
        replayed.verdict = VerdictOf(decision);
        replayed.reason = decision.reason;
        records.Append(replayed.record, decision);
        replayed.reply = decision.asked ? decision.reply : 99;
        if (HasDeletedDot(decision)) {
            replayed.deleted = decision.deletion->guid;
        }
    }
    return decisions;
}

// What a comparison showed of one event.
struct Shown {
    size_t line = 0;
    std::string before; // decision records
    std::string after;
    std::vector<std::pair<std::string, size_t>> causes;
};

// The record with the version of the second process, which is that of the built program.
std::string WithoutHostVersion(const std::string& record) {
    return record.substr(0, record.rfind(",\"host\""));
}

Policy PolicyOf(const std::string& text) {
    return ReadPolicy(SourceText("p.json", text));
}

// The guids that one replay has deleted before the event at `index`.
std::set<std::string> DeletedBefore(const std::vector<Replayed>& replay, size_t index) {
    std::set<std::string> deleted;
    for (size_t i = 0; i < index; ++i) {
        if (replay[i].deleted) {
            deleted.insert(*replay[i].deleted);
        }
    }
    return deleted;
}

// Whether a difference at `index` is to be marked: under one policy the library found no dot for a rule whose dot that
// policy has deleted, and the other policy still has it.
bool IsMarked(const std::vector<Replayed>& one, const Policy& policy, const std::vector<Replayed>& other,
              const Policy& otherPolicy, size_t index) {
    const std::set<std::string> gone = DeletedBefore(one, index);
    const std::set<std::string> otherGone = DeletedBefore(other, index);
    for (const RuleOutcome& outcome : one[index].reason.rules) {
        const std::string& guid = policy.rules[outcome.rule].guid;
        if (outcome.code == ReasonCode::noDot && gone.contains(guid) && otherPolicy.dots.contains(guid) &&
            !otherGone.contains(guid)) {
            return true;
        }
    }
    return false;
}

} // namespace

TEST(RandomComparison, EqualsTheComparisonOfTwoReplays) {
    constexpr int cases = MORDHOST_COMPARED_CASES;
    RandomComparison random(kit::RunSeed());
    RemoteSide sideAfter(PathOf(MORDHOST_PROGRAM));
    size_t differences = 0;
    size_t marked = 0;
    size_t equal = 0;
    for (int i = 0; i < cases && !testing::Test::HasFailure(); ++i) {
        const std::string textBefore = random.Policy();
        const std::string textAfter = random.Policy();
        const std::vector<ConnectionEvent> events = random.Events();
        SCOPED_TRACE(std::to_string(i) + '\n' + textBefore + '\n' + textAfter);
        const Policy before = PolicyOf(textBefore);
        const Policy after = PolicyOf(textAfter);
        const std::vector<Replayed> oldReplay = ReplayOf(before, events);
        const std::vector<Replayed> newReplay = ReplayOf(after, events);

        sideAfter.Start(SourceText("p.json", textAfter), MORDHOST_LIBRARY_DIRECTORY);
        LocalSide sideBefore(before, MORDHOST_LIBRARY_DIRECTORY, "test");
        Comparison comparison(sideBefore, before.dots, sideAfter, after.dots);
        std::vector<Shown> shown;
        EventBatch batch;
        for (size_t next = 0; next < events.size();) { // batches of different sizes
            batch.count = 0;
            for (size_t size = 1 + next % 5; size > 0 && next < events.size(); --size) {
                batch.Add() = events[next++];
            }
            comparison.Decide(batch, batch, [&](const Difference& difference) {
                Shown& row = shown.emplace_back();
                row = {difference.event.line, difference.beforeDetail.record, difference.afterDetail.record, {}};
                for (const Cause& cause : difference.causes) {
                    row.causes.emplace_back(cause.guid, cause.deletion.line);
                }
            });
        }

        size_t at = 0;
        std::map<std::pair<std::string, std::string>, size_t> matrix;
        for (size_t e = 0; e < events.size(); ++e) {
            ++matrix[{oldReplay[e].verdict, newReplay[e].verdict}];
            if (oldReplay[e].Equals(newReplay[e])) {
                ++equal;
                continue;
            }
            ++differences;
            ASSERT_LT(at, shown.size());
            EXPECT_EQ(shown[at].line, events[e].line);
            EXPECT_EQ(shown[at].before, oldReplay[e].record);
            EXPECT_EQ(WithoutHostVersion(shown[at].after), WithoutHostVersion(newReplay[e].record));
            const bool follows =
                IsMarked(oldReplay, before, newReplay, after, e) || IsMarked(newReplay, after, oldReplay, before, e);
            EXPECT_EQ(!shown[at].causes.empty(), follows) << shown[at].before << '\n' << shown[at].after;
            for (const auto& [guid, line] : shown[at].causes) {
                EXPECT_LT(line, events[e].line);
                size_t deletion = 0;
                while (events[deletion].line != line) {
                    ++deletion;
                }
                EXPECT_TRUE(oldReplay[deletion].deleted == guid || newReplay[deletion].deleted == guid);
            }
            marked += follows ? 1 : 0;
            ++at;
        }
        EXPECT_EQ(at, shown.size());
        EXPECT_EQ(comparison.Figures().matrix, matrix);
        EXPECT_EQ(comparison.Figures().events, events.size());
    }
    EXPECT_GT(differences, static_cast<size_t>(cases));
    EXPECT_GT(equal, static_cast<size_t>(cases));
    EXPECT_GT(marked, static_cast<size_t>(cases / 20));
}

TEST(RandomRehearsal, EqualsReplaysWithTheModeAndTheFailure) {
    constexpr int cases = MORDHOST_COMPARED_CASES / 100;
    RandomComparison random(kit::RunSeed() + 1);
    std::set<uint32_t> replies;
    size_t changed = 0;
    for (int i = 0; i < cases && !testing::Test::HasFailure(); ++i) {
        const std::string text = random.Policy();
        const std::vector<ConnectionEvent> events = random.Events();
        SCOPED_TRACE(std::to_string(i) + '\n' + text);
        const Policy policy = PolicyOf(text);
        const std::vector<Replayed> usual = ReplayOf(policy, events);
        std::vector<RehearsedEvent> rehearsed;
        std::vector<CombinationFigures> figures;
        {
            Rehearsal rehearsal(policy, MORDHOST_LIBRARY_DIRECTORY);
            for (const ConnectionEvent& event : events) {
                rehearsed.push_back(rehearsal.Decide(event));
            }
            figures = rehearsal.Figures();
        }
        const std::vector<Combination> all = AllCombinations();
        ASSERT_EQ(all.size(), 40U);
        for (size_t c = 0; c < all.size(); ++c) {
            Policy other = policy;
            other.defenderMode = all[c].defenderMode;
            other.exceptionMode = all[c].exceptionMode;
            other.failures.clear();
            if (all[c].failure->hasNoDots) {
                other.dots.clear();
            }
            const std::vector<Replayed> replay = ReplayOf(other, events, all[c].failure->failure, false);
            std::map<uint32_t, size_t> counts;
            size_t changes = 0;
            for (size_t e = 0; e < events.size(); ++e) {
                ASSERT_EQ(rehearsed[e].asked, replay[e].verdict != "no rule");
                if (!rehearsed[e].asked) {
                    continue;
                }
                EXPECT_EQ(rehearsed[e].usual, usual[e].reply);
                EXPECT_EQ(rehearsed[e].replies[c], replay[e].reply) << all[c].failure->name;
                ++counts[replay[e].reply];
                changes += replay[e].reply != usual[e].reply ? 1 : 0;
                replies.insert(replay[e].reply);
            }
            EXPECT_EQ(figures[c].replies, counts);
            EXPECT_EQ(figures[c].changed, changes);
            changed += changes;
        }
    }
    EXPECT_EQ(replies, (std::set<uint32_t>{0, 1, 2}));
    EXPECT_GT(changed, static_cast<size_t>(cases * 10));
}
