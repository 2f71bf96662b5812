// The switch into the 64-bit half of a 32-bit process and back, in assembly (gateEnter.S). For 32-bit builds on x86-64
// Windows only.
//
// Each routine leaves 32-bit mode for the duration of the call and runs on the calling thread's own stack, which must
// be below 4 GiB. Any thread may call. A fault in 64-bit mode, such as a read of an invalid address, ends the process;
// nothing reports it.
#pragma once

#include <cstdint>

extern "C" {

// 1 from the start; the library never writes it. GateCall and GateModuleBase return 0 while it is 0.
extern int32_t GateEnabled;

// Calls the 64-bit function at `function` with `count` arguments, each a uint64_t, by the 64-bit calling convention,
// and returns its result; returns 0 if GateEnabled is 0. The register arguments beyond `count` are 0.
uint64_t GateCall(uint64_t function, int32_t count, ...);

// Copies `size` bytes at the 64-bit address `source` to `destination`. Does nothing if a pointer is null, an address is
// 0 or the size is 0.
void GateCopyIn(void* destination, uint64_t source, uint32_t size);

// Returns whether `size` bytes at `buffer` and at the 64-bit address `address` are equal. Returns false if a pointer is
// null, an address is 0 or the size is 0.
bool GateCompare(const void* buffer, uint64_t address, uint32_t size);

// Returns the address of the calling thread's 64-bit TEB.
uint64_t GateThreadBlock();
}
