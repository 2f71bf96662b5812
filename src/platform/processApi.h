// The operating system services that process inspection uses, under the system's own names.
//
// Only Windows implements them (processApiWin32.cpp). On Linux the tests of process inspection link a scripted system
// behind this header. Any thread may call them. None throws or logs. Unless stated otherwise a failure leaves its
// reason in GetLastError.
#pragma once

#include <cstddef>
#include <cstdint>

#include "platform/wideChar.h"

namespace platform {

using Handle = void*;

constexpr uint16_t PROCESSOR_ARCHITECTURE_INTEL_32 = 0; // in SystemInfo: a 32-bit machine

// The fields of SYSTEM_INFO that the library reads.
struct SystemInfo {
    uint16_t wProcessorArchitecture;
};

// Opens the process `processId` with the access rights `access`. Returns null on failure. The caller closes the handle.
Handle OpenProcess(uint32_t access, bool inherit, uint32_t processId);

// Opens a thread; otherwise like OpenProcess.
Handle OpenThread(uint32_t access, bool inherit, uint32_t threadId);

// Closes `handle`, which must be open.
void CloseHandle(Handle handle);

// Returns the pseudo handle of the calling process. It needs no CloseHandle.
Handle GetCurrentProcess();

// Returns the id of an open process, or 0 on failure.
uint32_t GetProcessId(Handle process);

// Describes the machine itself, even if the caller is a 32-bit process on a 64-bit system. Cannot fail.
SystemInfo GetNativeSystemInfo();

// Stores 1 in `*isWow64` for a 32-bit process on a 64-bit system and 0 for any other process. Returns false on failure
// and leaves `*isWow64` unchanged.
bool IsWow64Process(Handle process, int32_t* isWow64);

// Copies `size` bytes at `address` of the target process to `destination`, and stores the number of bytes copied in
// `*bytesRead` unless that is null. Returns false on failure and leaves the NT status in LastStatusValue.
bool ReadProcessMemory(Handle process, uintptr_t address, void* destination, size_t size, size_t* bytesRead);

// Fills `context`, the platform's CONTEXT record, whose ContextFlags the caller has set. Returns false on failure and
// leaves the NT status in LastStatusValue.
bool GetThreadContext(Handle thread, void* context);

// Reads and writes LastStatusValue in the TEB of the calling thread.
uint32_t LastStatusValue();
void SetLastStatusValue(uint32_t status);

// THREADENTRY32. The caller sets dwSize to 28, its size, before the first call.
struct ThreadEntry {
    uint32_t dwSize;
    uint32_t cntUsage;
    uint32_t th32ThreadID;
    uint32_t th32OwnerProcessID;
    int32_t tpBasePri;
    int32_t tpDeltaPri;
    uint32_t dwFlags;
};
static_assert(sizeof(ThreadEntry) == 28);

// Takes a snapshot; TH32CS_SNAPTHREAD_FLAG with `processId` 0 covers all threads of the system. The caller closes the
// handle. On failure Windows returns the handle value -1, not null.
constexpr uint32_t TH32CS_SNAPTHREAD_FLAG = 4;
Handle CreateToolhelp32Snapshot(uint32_t flags, uint32_t processId);

// Step through a snapshot. Every call gets the same `entry`. Return false at the end, with error 18 (no more files),
// and on failure, with any other error.
bool Thread32First(Handle snapshot, ThreadEntry* entry);
bool Thread32Next(Handle snapshot, ThreadEntry* entry);

// Stores the NUL-terminated device names of `drive`, a letter with its colon, in `buffer`, which has room for
// `capacity` units. Returns the number of units stored, or 0 on failure.
uint32_t QueryDosDeviceW(const WideChar* drive, WideChar* buffer, uint32_t capacity);

// Allocates and frees a readable and writable block of `size` bytes in this process. VirtualAlloc returns null on
// failure.
void* VirtualAlloc(size_t size);
void VirtualFree(void* area);

} // namespace platform
