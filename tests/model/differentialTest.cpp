// Compares all observable behaviour of the shipped library with the model on random cases.
//
// Environment: MORDREV_SEED is the seed, MORDREV_MODEL_CASES the number of cases, MORDREV_MODEL_CASE the number of a
// single case, which then runs alone, after those before it on the same receiver.
#include <cstdlib>
#include <iostream>
#include <optional>
#include <sstream>

#include <gtest/gtest.h>

#include "kit/text/runSeed.h"
#include "model/caseRun.h"
#include "model/product.h"

namespace {

using namespace model;

// This many tests, which can run at the same time, share the cases.
constexpr uint64_t shares = 2;

std::optional<uint64_t> Setting(const char* name) {
    const char* const text = std::getenv(name);
    if (text == nullptr || *text == '\0') {
        return std::nullopt;
    }
    char* end = nullptr;
    const uint64_t value = std::strtoull(text, &end, 10);
    if (*end != '\0') {
        ADD_FAILURE() << name << " is not a number: " << text;
    }
    return value;
}

// The first case of a share, which is the first of a receiver.
uint64_t FirstOf(uint64_t share, uint64_t cases) {
    const uint64_t first = cases * share / shares;
    return first - first % casesOfAReceiver;
}

class Differential : public testing::TestWithParam<uint64_t> {};

TEST_P(Differential, LibraryMatchesTheModel) {
    const uint64_t seed = kit::RunSeed();
    std::ostringstream out;
    if (const auto single = Setting("MORDREV_MODEL_CASE")) {
        EXPECT_FALSE(RunOneCase(seed, *single, out)) << out.str();
        return;
    }
    const uint64_t all = Setting("MORDREV_MODEL_CASES").value_or(MORDREV_MODEL_CASES);
    const uint64_t first = FirstOf(GetParam(), all);
    const uint64_t end = GetParam() + 1 == shares ? all : FirstOf(GetParam() + 1, all);
    BranchCounts branches;
    const uint64_t differences = RunCases({seed, first, end}, branches, out);
    EXPECT_EQ(differences, 0U) << out.str();
    EXPECT_EQ(differences == 0 ? branches.Starved(end - first) : "", "")
        << "of cases " << first << " to " << end << " of seed " << seed;
    std::cout << "cases " << first << " to " << end << " of seed " << seed << ", " << differences << " differences\n"
              << "  taken                          times   in 10,000     least\n"
              << branches.Table(end - first);
}

INSTANTIATE_TEST_SUITE_P(Share, Differential, testing::Range<uint64_t>(0, shares));

} // namespace
