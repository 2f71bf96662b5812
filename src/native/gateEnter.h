// The way into the 64-bit half of a 32-bit process and back, at the machine's level (gateEnter.S). For a 32-bit build
// on x86-64 Windows alone.
//
// Each routine leaves 32-bit mode for the length of the call and runs on the calling thread's own stack, which has to
// lie below 4 GiB. A fault in 64-bit mode, such as a wrong address, ends the process.
#pragma once

#include <cstdint>

extern "C" {

// 1 from the start; nothing writes it. GateCall and GateModuleBase do nothing while it is 0.
extern int32_t GateEnabled;

// Calls the 64-bit function at `function` with `count` arguments, each a uint64_t, by the 64-bit calling convention,
// and returns its result; 0 if GateEnabled is 0. Register arguments that `count` does not cover are 0.
uint64_t GateCall(uint64_t function, int32_t count, ...);

// Copies `size` bytes at the 64-bit address `source` to `destination`. Does nothing if one of the three is null or 0.
void GateCopyIn(void* destination, uint64_t source, uint32_t size);

// Whether the `size` bytes at `buffer` and at the 64-bit address `address` are the same. False if one of the three is
// null or 0.
bool GateCompare(const void* buffer, uint64_t address, uint32_t size);

// The address of the calling thread's 64-bit TEB.
uint64_t GateThreadBlock();
}
