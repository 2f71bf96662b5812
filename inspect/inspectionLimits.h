// The limits of one inspection. The inspected process controls the content of its memory: an endless list, texts of any
// size.
#pragma once

#include <chrono>
#include <cstdint>

namespace mordinspect {

// A request that would exceed a limit is refused, and the part of the output ends with that reason.
struct Limits {
    uint32_t reads = 16384;           // reads and queries per part of the output
    uint64_t bytes = 4 * 1024 * 1024; // requested bytes per part of the output
    std::chrono::seconds time{10};    // per process; a request in progress is not interrupted
};

// The list of all processes comes from the system, in one reply.
constexpr Limits limitsOfProcessList{2, 256 * 1024 * 1024, std::chrono::seconds(10)};

} // namespace mordinspect
