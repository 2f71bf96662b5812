// What one inspection may cost. A target chooses what its memory holds: a list without an end, texts of any size.
#pragma once

#include <chrono>
#include <cstdint>

namespace mordinspect {

struct Limits {
    uint32_t reads = 16384;           // reads and queries, for each part of the output
    uint64_t bytes = 4 * 1024 * 1024; // that they ask for, for each part
    std::chrono::seconds time{10};    // for the whole process; a request that has begun runs to its end
};

// The list of all processes is the system's own, and comes in one piece.
constexpr Limits limitsOfProcessList{2, 256 * 1024 * 1024, std::chrono::seconds(10)};

} // namespace mordinspect
