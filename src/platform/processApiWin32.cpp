#include "platform/processApi.h"

#include <windows.h>

#include <tlhelp32.h>

namespace platform {

namespace {

// Offset of LastStatusValue in the TEB; the system headers do not declare the field.
constexpr size_t lastStatusInTeb = sizeof(void*) == 4 ? 0xBF4 : 0x1250;

uint32_t* LastStatusField() {
    return reinterpret_cast<uint32_t*>(reinterpret_cast<char*>(::NtCurrentTeb()) + lastStatusInTeb);
}

THREADENTRY32* SystemEntry(ThreadEntry* entry) {
    static_assert(sizeof(THREADENTRY32) == sizeof(ThreadEntry) &&
                  offsetof(THREADENTRY32, th32ThreadID) == offsetof(ThreadEntry, th32ThreadID) &&
                  offsetof(THREADENTRY32, th32OwnerProcessID) == offsetof(ThreadEntry, th32OwnerProcessID));
    return reinterpret_cast<THREADENTRY32*>(entry);
}

} // namespace

Handle OpenProcess(uint32_t access, bool inherit, uint32_t processId) {
    return ::OpenProcess(access, inherit ? TRUE : FALSE, processId);
}

Handle OpenThread(uint32_t access, bool inherit, uint32_t threadId) {
    return ::OpenThread(access, inherit ? TRUE : FALSE, threadId);
}

void CloseHandle(Handle handle) {
    ::CloseHandle(handle);
}

Handle GetCurrentProcess() {
    return ::GetCurrentProcess();
}

uint32_t GetProcessId(Handle process) {
    return ::GetProcessId(process);
}

SystemInfo GetNativeSystemInfo() {
    SYSTEM_INFO info{};
    ::GetNativeSystemInfo(&info);
    return {info.wProcessorArchitecture};
}

bool IsWow64Process(Handle process, int32_t* isWow64) {
    BOOL flag = *isWow64;
    const bool succeeded = ::IsWow64Process(process, &flag) != FALSE;
    *isWow64 = flag;
    return succeeded;
}

bool ReadProcessMemory(Handle process, uintptr_t address, void* destination, size_t size, size_t* bytesRead) {
    static_assert(sizeof(SIZE_T) == sizeof(size_t));
    return ::ReadProcessMemory(process, reinterpret_cast<const void*>(address), destination, size,
                               reinterpret_cast<SIZE_T*>(bytesRead)) != FALSE;
}

bool GetThreadContext(Handle thread, void* context) {
    return ::GetThreadContext(thread, static_cast<CONTEXT*>(context)) != FALSE;
}

uint32_t LastStatusValue() {
    return *LastStatusField();
}

void SetLastStatusValue(uint32_t status) {
    *LastStatusField() = status;
}

Handle CreateToolhelp32Snapshot(uint32_t flags, uint32_t processId) {
    return ::CreateToolhelp32Snapshot(flags, processId);
}

bool Thread32First(Handle snapshot, ThreadEntry* entry) {
    return ::Thread32First(snapshot, SystemEntry(entry)) != FALSE;
}

bool Thread32Next(Handle snapshot, ThreadEntry* entry) {
    return ::Thread32Next(snapshot, SystemEntry(entry)) != FALSE;
}

uint32_t QueryDosDeviceW(const WideChar* drive, WideChar* buffer, uint32_t capacity) {
    return ::QueryDosDeviceW(drive, buffer, capacity);
}

void* VirtualAlloc(size_t size) {
    return ::VirtualAlloc(nullptr, size, MEM_COMMIT, PAGE_READWRITE);
}

void VirtualFree(void* area) {
    ::VirtualFree(area, 0, MEM_RELEASE);
}

} // namespace platform
