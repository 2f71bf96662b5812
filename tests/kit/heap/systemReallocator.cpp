// A part of its own, for programs that have malloc and calloc wrapped alone.
#include "kit/heap/systemAllocator.h"

// The linker's names for what it wraps.
extern "C" {
void* __real_realloc(void* memory, size_t size);
void __real_free(void* memory);
}

void* SystemRealloc(void* memory, size_t size) {
    return __real_realloc(memory, size);
}

void SystemFree(void* memory) {
    __real_free(memory);
}
