#include "kit/heap/systemAllocator.h"

// The linker's names for what it wraps.
extern "C" {
void* __real_malloc(size_t size);
void* __real_calloc(size_t count, size_t size);
}

void* SystemMalloc(size_t size) {
    return __real_malloc(size);
}

void* SystemCalloc(size_t count, size_t size) {
    return __real_calloc(count, size);
}
