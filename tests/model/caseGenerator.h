// Random cases. A case depends on nothing but the seed and its number: each can be made again alone.
#pragma once

#include <cstdint>

#include "model/testCase.h"

namespace model {

// `logs` is whether the process that the case is for has logging on.
TestCase MakeCase(uint64_t seed, uint64_t number, bool logs);

} // namespace model
