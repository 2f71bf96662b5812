// How much of the heap is in use, to see whether an object was made or freed.
#pragma once

#include <cstddef>

namespace edge {

// Bytes in use in the whole process. Between two calls on one thread, with no other thread at work, the difference is
// what the calls in between allocated and kept.
size_t HeapBytesInUse();

} // namespace edge
