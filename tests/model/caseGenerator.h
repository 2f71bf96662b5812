// Random cases.
#pragma once

#include <cstdint>

#include "model/testCase.h"

namespace model {

// Every so many cases one is large: allow lists of 1,000 and more pairs, one after the other, events of 256 and more
// rules, answers beyond 64 KiB.
constexpr uint64_t casesOfALargeOne = 1000;

// Depends on the arguments alone. `place` counts the cases before it on the same receiver; `logs` is false for a
// receiver that never logs.
TestCase MakeCase(uint64_t seed, uint64_t number, uint64_t place, bool logs);

} // namespace model
