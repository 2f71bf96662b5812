// How much memory this process holds.
#pragma once

#include <cstddef>

namespace bench {

// In bytes; what is swapped out does not count.
size_t ResidentSize();

} // namespace bench
