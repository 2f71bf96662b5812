// The 64-bit NT functions with the habits of Win32 functions: a boolean result, and the reason as the last error.
//
// Handles are those of the 32-bit caller, addresses are 64 bits wide, local memory is the caller's own. Any status but
// 0 counts as failure: 0 is returned and the thread's last error is set. A function that the system lacks gives 0 and
// leaves the last error alone. Each wrapper keeps the address of its function once it is
// found. Any thread may call.
#pragma once

#include <cstdint>

#include "platform/processApi.h"

// Fill and set a thread's 64-bit context record.
bool GateGetContext(platform::Handle thread, void* context);
bool GateSetContext(platform::Handle thread, const void* context);

// Copy `size` bytes from and to the target; `count`, which may be null, receives how many on success.
bool GateReadMemory(platform::Handle process, uint64_t address, void* destination, uint32_t size, uint64_t* count);
bool GateWriteMemory(platform::Handle process, uint64_t address, const void* source, uint32_t size, uint64_t* count);

// The base of `size` bytes allocated in the target, at `address` or anywhere for 0; 0 on failure.
uint64_t GateAllocateMemory(platform::Handle process, uint64_t address, uint32_t size, uint32_t allocationType,
                            uint32_t protection);

bool GateFreeMemory(platform::Handle process, uint64_t address, uint32_t size, uint32_t freeType);

// Changes the protection of a range and stores the old one.
bool GateProtectMemory(platform::Handle process, uint64_t address, uint32_t size, uint32_t protection,
                       uint32_t* oldProtection);

// Fills a 64-bit MEMORY_BASIC_INFORMATION, and returns the length that the function told, whatever its status.
uint32_t GateQueryMemory(platform::Handle process, uint64_t address, void* buffer, uint32_t size);
