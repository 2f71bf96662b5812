// The resident memory of this process.
#pragma once

#include <cstddef>

namespace bench {

// In bytes, without swapped pages.
size_t ResidentSize();

} // namespace bench
