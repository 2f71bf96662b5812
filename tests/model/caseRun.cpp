#include "model/caseRun.h"

#include <algorithm>
#include <ostream>
#include <string>

#include "model/caseGenerator.h"
#include "model/product.h"
#include "model/session.h"
#include "model/watch.h"

namespace model {
namespace {

constexpr uint64_t shown = 5;

// One receiver in eight never logs.
TestCase CaseOf(uint64_t seed, uint64_t number) {
    return MakeCase(seed, number, number % casesOfAReceiver, number / casesOfAReceiver % 8 != 7);
}

// The difference of the case with all inputs, after the cases before it on the same receiver.
std::string Details(uint64_t seed, uint64_t number) {
    BranchCounts unused;
    Session session(unused);
    for (uint64_t before = number - number % casesOfAReceiver; before < number; ++before) {
        session.Run(CaseOf(seed, before));
    }
    session.SetVerbose();
    return session.Run(CaseOf(seed, number));
}

} // namespace

uint64_t RunCases(const CaseRange& range, BranchCounts& branches, std::ostream& out) {
    StartWatch("seed " + std::to_string(range.seed));
    uint64_t differences = 0;
    for (uint64_t first = range.first; first < range.end; first += casesOfAReceiver) {
        uint64_t number = first;
        std::string difference;
        {
            Session session(branches);
            const uint64_t end = std::min(first + casesOfAReceiver, range.end);
            for (; number < end && difference.empty(); ++number) {
                WatchCase(number);
                difference = session.Run(CaseOf(range.seed, number));
            }
        }
        if (!difference.empty() && ++differences <= shown) {
            const std::string details = Details(range.seed, --number);
            out << "MORDREV_SEED=" << range.seed << " MORDREV_MODEL_CASE=" << number << "\n"
                << (details.empty() ? difference + "  and none in a second run\n" : details) << std::flush;
        }
    }
    return differences;
}

bool RunOneCase(uint64_t seed, uint64_t number, std::ostream& out) {
    StartWatch("seed " + std::to_string(seed));
    WatchCase(number);
    const std::string difference = Details(seed, number);
    out << "case " << number << " of seed " << seed << (difference.empty() ? ": no difference\n" : "\n") << difference;
    return !difference.empty();
}

} // namespace model
