// A size that a record claims and that is out of all reason finds no memory, at once and on every machine. A program
// that links this is linked with calloc and malloc wrapped.
#include "kit/heap/systemAllocator.h"

#include <cstddef>

extern "C" {
void* __wrap_calloc(size_t count, size_t size);
void* __wrap_malloc(size_t size);
}

namespace {

constexpr size_t largest = size_t{1} << 27;

} // namespace

void* __wrap_calloc(size_t count, size_t size) {
    return count > largest || size > largest || count * size > largest ? nullptr : SystemCalloc(count, size);
}

void* __wrap_malloc(size_t size) {
    return size > largest ? nullptr : SystemMalloc(size);
}
