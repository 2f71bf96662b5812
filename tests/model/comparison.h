// The library and the model, side by side on one random case.
#pragma once

#include <cstdint>
#include <string>

#include "model/branches.h"

namespace model {

// Empty when what can be seen from outside is the same; else what is needed to look into it: the number of the case,
// where the two part, and the case made as small as it can be. PrepareLibrary must have been called, with the same
// `logs`.
std::string CompareOnCase(uint64_t seed, uint64_t number, bool logs, BranchCounts& branches);

} // namespace model
