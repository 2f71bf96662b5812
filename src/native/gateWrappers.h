// The 64-bit NT functions with the conventions of Win32 functions: a boolean result, and the reason in the last error.
//
// Handles belong to the 32-bit caller, addresses in the target have 64 bits, and local memory is the caller's own,
// below 2 GiB. Every status but 0 is a failure: the function returns 0 and sets the thread's last error. If the system
// lacks the function, it returns 0 and leaves the last error unchanged. Each function caches its address once it is
// found. Any thread may call; nothing throws or logs.
#pragma once

#include <cstdint>

#include "platform/processApi.h"

// Get and set a thread's context. `context` is a 64-bit CONTEXT record, aligned as the system requires.
bool GateGetContext(platform::Handle thread, void* context);
bool GateSetContext(platform::Handle thread, const void* context);

// Copy `size` bytes from and to the target. On success `*count` receives the number of bytes copied; `count` may be
// null.
bool GateReadMemory(platform::Handle process, uint64_t address, void* destination, uint32_t size, uint64_t* count);
bool GateWriteMemory(platform::Handle process, uint64_t address, const void* source, uint32_t size, uint64_t* count);

// Allocates `size` bytes in the target, at `address`, or anywhere if that is 0. Returns the base of the region, or 0.
uint64_t GateAllocateMemory(platform::Handle process, uint64_t address, uint32_t size, uint32_t allocationType,
                            uint32_t protection);

// Frees or decommits a region, as `freeType` (MEM_RELEASE or MEM_DECOMMIT) says.
bool GateFreeMemory(platform::Handle process, uint64_t address, uint32_t size, uint32_t freeType);

// Changes the protection of a range and stores the old one in `*oldProtection`.
bool GateProtectMemory(platform::Handle process, uint64_t address, uint32_t size, uint32_t protection,
                       uint32_t* oldProtection);

// Fills `buffer` with a 64-bit MEMORY_BASIC_INFORMATION and returns the length that the function delivered, whatever
// its status.
uint32_t GateQueryMemory(platform::Handle process, uint64_t address, void* buffer, uint32_t size);
