#include "mordRev/systemAllocator.h"

// The linker's names for what it wraps.
extern "C" {
void* __real_malloc(size_t size);
void* __real_calloc(size_t count, size_t size);
void* __real_realloc(void* memory, size_t size);
void __real_free(void* memory);
}

void* SystemMalloc(size_t size) {
    return __real_malloc(size);
}

void* SystemCalloc(size_t count, size_t size) {
    return __real_calloc(count, size);
}

void* SystemRealloc(void* memory, size_t size) {
    return __real_realloc(memory, size);
}

void SystemFree(void* memory) {
    __real_free(memory);
}
