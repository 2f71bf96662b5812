// What process inspection needs of the operating system, under the system's own names.
//
// These have a body on Windows alone (processApiWin32.cpp). Elsewhere the tests of process inspection link a system of
// their own behind this header. All may be called from any thread.
#pragma once

#include <cstddef>
#include <cstdint>

#include "platform/wideChar.h"

namespace platform {

using Handle = void*;

constexpr uint16_t PROCESSOR_ARCHITECTURE_INTEL_32 = 0; // a 32-bit machine, in SystemInfo

// The part of SYSTEM_INFO that is used.
struct SystemInfo {
    uint16_t wProcessorArchitecture;
};

// A handle on the process `processId` with the rights `access`, or null with the reason in GetLastError. The caller
// closes it.
Handle OpenProcess(uint32_t access, bool inherit, uint32_t processId);

// A handle on a thread, likewise.
Handle OpenThread(uint32_t access, bool inherit, uint32_t threadId);

// Closes a handle that this process owns.
void CloseHandle(Handle handle);

// The pseudo handle of the calling process. It is not closed.
Handle GetCurrentProcess();

// The id of the process behind a handle, or 0.
uint32_t GetProcessId(Handle process);

// What the machine itself is, also when the caller is a 32-bit process on a 64-bit system.
SystemInfo GetNativeSystemInfo();

// Stores 1 in `*isWow64` for a 32-bit process on a 64-bit system and 0 for any other. False, with `*isWow64` left
// alone, on failure.
bool IsWow64Process(Handle process, int32_t* isWow64);

// Copies `size` bytes at `address` of the target to `destination`, and their count to `*bytesRead` unless that is null.
// On failure the NT status stands in LastStatusValue.
bool ReadProcessMemory(Handle process, uintptr_t address, void* destination, size_t size, size_t* bytesRead);

// Fills the platform's context record of a thread. On failure the NT status stands in LastStatusValue.
bool GetThreadContext(Handle thread, void* context);

// The last-status value in the TEB of the calling thread.
uint32_t LastStatusValue();
void SetLastStatusValue(uint32_t status);

// THREADENTRY32. dwSize is set to its size, 28, before the first call.
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

// A snapshot of all threads of the system for `flags` TH32CS_SNAPTHREAD and `processId` 0, which the caller closes.
constexpr uint32_t TH32CS_SNAPTHREAD_FLAG = 4;
Handle CreateToolhelp32Snapshot(uint32_t flags, uint32_t processId);

// Walk a snapshot, with one entry for all calls; false at its end and on failure.
bool Thread32First(Handle snapshot, ThreadEntry* entry);
bool Thread32Next(Handle snapshot, ThreadEntry* entry);

// Stores the NUL-ended device names behind a drive letter with its colon, and returns how many units were stored, or 0.
uint32_t QueryDosDeviceW(const WideChar* drive, WideChar* buffer, uint32_t capacity);

// Commits a local work area of `size` bytes, readable and writable, or gives null; and releases it.
void* VirtualAlloc(size_t size);
void VirtualFree(void* area);

} // namespace platform
