// The system's own allocator, in a program that is linked with malloc and calloc wrapped, or realloc and free as well.
#pragma once

#include <cstddef>

void* SystemMalloc(size_t size);
void* SystemCalloc(size_t count, size_t size);
void* SystemRealloc(void* memory, size_t size);
void SystemFree(void* memory);
