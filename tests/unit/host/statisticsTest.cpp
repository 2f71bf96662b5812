#include "output/statistics.h"

#include <gtest/gtest.h>

using namespace mordhost;
using std::chrono::nanoseconds;

namespace {

Decision Decided(uint32_t reply, int64_t duration) {
    Decision decision;
    decision.asked = true;
    decision.reply = reply;
    decision.duration = nanoseconds(duration);
    return decision;
}

Statistics Of(const std::vector<int64_t>& durations) {
    Statistics statistics;
    for (const int64_t duration : durations) {
        statistics.Add(Decided(1, duration));
    }
    return statistics;
}

} // namespace

TEST(Statistics, CountsByVerdict) {
    Statistics statistics;
    statistics.Add(Decided(0, 1));
    statistics.Add(Decided(1, 1));
    statistics.Add(Decided(2, 1));
    statistics.Add(Decided(0, 1));
    statistics.Add({});
    EXPECT_EQ(statistics.Events(), 5U);
    EXPECT_EQ(statistics.Verdicts(),
              (std::map<std::string, size_t>{{"allow", 1}, {"allow (flagged)", 1}, {"block", 2}, {"no rule", 1}}));
}

TEST(Statistics, CountsReportsAndDeletedDots) {
    Statistics statistics;
    Decision decision = Decided(1, 1);
    decision.reports = {"{}", "{}"};
    decision.deletion = DotHost::Deletion{"", "", true};
    statistics.Add(decision);
    statistics.Add(Decided(1, 1));
    EXPECT_EQ(statistics.Reports(), 2U);
    EXPECT_EQ(statistics.Deleted(), 1U);
}

TEST(Statistics, APercentileIsTheDurationOfTheNearestRank) {
    EXPECT_EQ(Of({30, 10, 20}).Percentile(50), nanoseconds(20));
    EXPECT_EQ(Of({40, 30, 10, 20}).Percentile(50), nanoseconds(20));
    EXPECT_EQ(Of({40, 30, 10, 20}).Percentile(99), nanoseconds(40));
    EXPECT_EQ(Of({7}).Percentile(50), nanoseconds(7));
    EXPECT_EQ(Of({7}).Percentile(0), nanoseconds(7));
    std::vector<int64_t> hundred;
    for (int64_t i = 100; i > 0; --i) {
        hundred.push_back(i);
    }
    EXPECT_EQ(Of(hundred).Percentile(50), nanoseconds(50));
    EXPECT_EQ(Of(hundred).Percentile(99), nanoseconds(99));
    EXPECT_EQ(Of(hundred).Percentile(100), nanoseconds(100));
}

TEST(Statistics, APercentileWithoutDecisionsIsZero) {
    EXPECT_EQ(Of({}).Percentile(50), nanoseconds(0));
}

TEST(Statistics, AnUndecidedEventHasNoDuration) {
    Statistics statistics;
    statistics.Add({});
    statistics.Add(Decided(1, 9));
    EXPECT_EQ(statistics.Percentile(50), nanoseconds(9));
}

TEST(Statistics, DurationsAreLimitedToFourSeconds) {
    EXPECT_EQ(Of({10000000000}).Percentile(50), nanoseconds(4294967295));
    EXPECT_EQ(Of({-1}).Percentile(50), nanoseconds(0)) << "a clock that was set back";
}
