// Compares the library with the model on random cases.
#pragma once

#include <cstdint>
#include <iosfwd>

#include "model/branches.h"

namespace model {

struct CaseRange {
    uint64_t seed;
    uint64_t first; // of a receiver, which is new: a multiple of casesOfAReceiver
    uint64_t end;
};

// Runs the cases and returns how many differ; skips the cases after a difference on the same receiver. Writes the first
// five differences to `out`, with their inputs and the command that repeats them.
uint64_t RunCases(const CaseRange& range, BranchCounts& branches, std::ostream& out);

// Runs one case, after those before it on the same receiver, and writes what happens to `out`. Returns whether it
// differs.
bool RunOneCase(uint64_t seed, uint64_t number, std::ostream& out);

} // namespace model
