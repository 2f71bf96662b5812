// Every combination of up to two rules. tools/proof runs those of three.
#include <iostream>
#include <sstream>

#include <gtest/gtest.h>

#include "model/smallScope.h"

namespace {

using namespace model;

// The numbers of combinations, counted by hand:
//   settings: 2 (started) * 5 (modes) * 3 (exception modes) * 2 (sink) * 3 (action) * 4 (flags) = 720
//   type patterns with their allow lists (1 + 3 to the number of keys):
//     one rule: web 4, other 4 = 8
//     two rules: web web 10, web other 10, other web 10, equal 4, different 10 = 44
//   answers: 4 + 8 for one rule, 4 + 64 for two; results of the query: 3
constexpr uint64_t oneRule = 720 * 8 * 12 * 3;
constexpr uint64_t twoRules = 720 * 44 * 68 * 3;

// The runs, for each pattern with its list:
//   no query: modes 1 to 4 with flag 4 and mode 5, 12 of 20 modes with flags, 36 settings beside: 432
//   failed query: the other 8, 36 settings, 2 results, null or unreadable: 1152
//   mode 1, answered: 2 of these 8, 36 settings, null or unreadable: 144
//   modes 2 to 4, answered: 6 of these 8, 36 settings: 216 for each answer
constexpr uint64_t oneRuleRuns = 8 * (432 + 1152 + 144 + 216 * 12);
constexpr uint64_t twoRulesRuns = 44 * (432 + 1152 + 144 + 216 * 68);

void RunScope(uint32_t rules, uint64_t combinations, uint64_t runs) {
    BranchCounts branches;
    std::ostringstream out;
    const ScopeCounts counts = RunSmallScope(rules, 0, 1, branches, out);
    EXPECT_EQ(counts.differences, 0U) << out.str();
    EXPECT_EQ(counts.combinations, combinations);
    EXPECT_EQ(counts.runs, runs);
    std::cout << counts.combinations << " combinations in " << counts.runs << " runs\n";
    for (const Branch branch :
         {Branch::EventEmergency, Branch::EventDisconnect, Branch::QueryNetworkErrorAllowed, Branch::QueryOtherError,
          Branch::QueryNullAnswer, Branch::QueryAllForbid, Branch::AnswerRefused, Branch::AnswerRootNoObject,
          Branch::RuleNotStarted, Branch::RuleGuidWithoutMids, Branch::MatchKeyAbsent, Branch::MatchNoneInCommon,
          Branch::MatchOneInCommon, Branch::FirstRuleMatched, Branch::NoRuleMatched, Branch::ModifyFlagged,
          Branch::ModifyBlockBecameAllow, Branch::ReportNoSink}) {
        EXPECT_GT(branches[branch], 0U) << "branch " << static_cast<size_t>(branch);
    }
}

TEST(SmallScope, EveryCombinationOfOneRule) {
    RunScope(1, oneRule, oneRuleRuns);
}

TEST(SmallScope, EveryCombinationOfTwoRules) {
    RunScope(2, twoRules, twoRulesRuns);
}

} // namespace
