// The library and the model, side by side on random cases: what can be seen from outside must be the same.
//
// MORDREV_MODEL_CASES is the number of cases in all, MORDREV_MODEL_SEED the seed that they are made from,
// MORDREV_MODEL_CASE the number of a single case, which is then the only one.
#include <cstdlib>
#include <iostream>
#include <optional>
#include <string>

#include <gtest/gtest.h>

#include "model/caseRun.h"
#include "model/comparison.h"

namespace {

using namespace model;

// The cases are dealt out to this many tests, which can run at the same time.
constexpr uint64_t shares = 4;

std::optional<uint64_t> Setting(const char* name) {
    const char* const text = std::getenv(name);
    if (text == nullptr || *text == '\0') {
        return std::nullopt;
    }
    char* end = nullptr;
    const uint64_t value = std::strtoull(text, &end, 10);
    if (*end != '\0') {
        ADD_FAILURE() << name << " is no number: " << text;
    }
    return value;
}

uint64_t CasesInAll() {
    return Setting("MORDREV_MODEL_CASES").value_or(MORDREV_MODEL_CASES);
}

// Whether the case came out the same; tells everything needed to look into it when it did not.
bool Agrees(uint64_t seed, uint64_t number, bool logs, BranchCounts& branches) {
    const std::string difference = CompareOnCase(seed, number, logs, branches);
    if (!difference.empty()) {
        ADD_FAILURE() << difference;
    }
    return difference.empty();
}

// Cases from `first` to before `end`; gives up after a few differences.
void RunCases(uint64_t first, uint64_t end, bool logs) {
    const uint64_t seed = Setting("MORDREV_MODEL_SEED").value_or(1);
    BranchCounts branches;
    PrepareLibrary(logs);
    if (const auto single = Setting("MORDREV_MODEL_CASE")) {
        Agrees(seed, *single, logs, branches);
        return;
    }
    uint64_t differences = 0;
    uint64_t number = first;
    for (; number < end && differences < 5; ++number) {
        differences += Agrees(seed, number, logs, branches) ? 0U : 1U;
    }
    const uint64_t cases = number - first;
    EXPECT_EQ(branches.Starved(cases), "") << "of " << cases << " cases of seed " << seed;
    std::cout << cases << " cases of seed " << seed << ", " << differences << " differences\n"
              << "  taken                          times   in 10,000     least\n"
              << branches.Table(cases);
}

class Differential : public testing::TestWithParam<uint64_t> {};

TEST_P(Differential, LibraryDoesWhatTheModelDoes) {
    const uint64_t cases = CasesInAll();
    RunCases(cases * GetParam() / shares, cases * (GetParam() + 1) / shares, true);
}

INSTANTIATE_TEST_SUITE_P(Share, Differential, testing::Range<uint64_t>(0, shares));

TEST(DifferentialWithoutLogging, LibraryDoesWhatTheModelDoes) {
    const uint64_t cases = CasesInAll();
    RunCases(cases, cases + cases / 10, false);
}

} // namespace
