// An operating system for several threads at once: what is behind platform.h, processApi.h and gateEnter.h in the test
// of first uses. Everything in it is constant but the counts, which are atomic and put no order into what the threads
// do.
//
// The 64-bit half of the process lies in this one: its addresses are pointers.
#pragma once

#include <atomic>
#include <cstdint>

namespace firstUse {

extern std::atomic<int> namesAskedFor; // calls of GetProcAddress

// What the functions of the 64-bit ntdll return, and the address that the loader's resolver gives for any name.
constexpr uint64_t resolved = 0x7FFB00001234;
constexpr uint64_t statusOfGateCalls = 0xC0000005;

// What NtQuerySystemInformation returns.
constexpr int32_t statusOfQueries = 0x1234;

// The base of the 64-bit ntdll.
uint64_t NtdllBase();

// The last error that was set by the calling thread.
uint32_t LastErrorSet();

} // namespace firstUse
