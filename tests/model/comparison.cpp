#include "model/comparison.h"

#include "model/caseGenerator.h"
#include "model/caseReducer.h"
#include "model/caseRun.h"

namespace model {
namespace {

std::string Compare(const TestCase& testCase, BranchCounts& branches) {
    return Difference(RunOnModel(testCase, branches), RunOnLibrary(testCase));
}

} // namespace

std::string CompareOnCase(uint64_t seed, uint64_t number, bool logs, BranchCounts& branches) {
    const TestCase testCase = MakeCase(seed, number, logs);
    const std::string difference = Compare(testCase, branches);
    if (difference.empty()) {
        return "";
    }
    BranchCounts unused;
    const TestCase small =
        Reduced(testCase, [&unused](const TestCase& candidate) { return !Compare(candidate, unused).empty(); });
    return "MORDREV_MODEL_SEED=" + std::to_string(seed) + " MORDREV_MODEL_CASE=" + std::to_string(number) +
           (logs ? "" : " with logging off") + "\n" + difference + "reduced to\n" + Dump(small) +
           Compare(small, unused);
}

} // namespace model
