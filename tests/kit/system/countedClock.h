// Counts how often the code that is linked into the program asks the system for the time. A program that links
// `countedClock` has std::chrono::system_clock::now wrapped.
#pragma once

#include <cstddef>

namespace kit {

// Since the program began. For one thread.
size_t TimeReads();

} // namespace kit
