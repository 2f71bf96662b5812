#include "abi/heapUse.h"

// Of the runtime of the sanitizers; the compiler brings no header for it.
extern "C" size_t __sanitizer_get_current_allocated_bytes(); // NOLINT(bugprone-reserved-identifier)

namespace edge {

// The sanitizers replace the heap; the system's figures do not include theirs.
size_t HeapBytesInUse() {
    return __sanitizer_get_current_allocated_bytes();
}

} // namespace edge
