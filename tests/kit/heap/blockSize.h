// The size of an allocated block. There is a body for each platform.
#pragma once

#include <cstddef>

namespace kit {

// Returns the number of bytes that the allocator reserved for `block`, which malloc or one of its relatives returned.
size_t BlockSize(void* block);

} // namespace kit
