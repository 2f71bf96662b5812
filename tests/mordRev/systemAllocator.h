// The system's own allocator, in a program that is linked with malloc, calloc, realloc and free wrapped.
#pragma once

#include <cstddef>

void* SystemMalloc(size_t size);
void* SystemCalloc(size_t count, size_t size);
void* SystemRealloc(void* memory, size_t size);
void SystemFree(void* memory);
