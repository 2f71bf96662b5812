#include "native/nativeFunctionTable.h"

#include <atomic>
#include <thread>

namespace {

constexpr const char* ntdllNames[] = {
    "NtQuerySystemInformation",
    "RtlDosApplyFileIsolationRedirection_Ustr",
    "RtlInitUnicodeString",
    "RtlFreeUnicodeString",
    "RtlHashUnicodeString",
    "RtlUpcaseUnicodeChar",
    "NtQueryInformationProcess",
    "NtSetInformationProcess",
    "NtQueryInformationThread",
    "NtDuplicateObject",
    "NtQueryObject",
    "NtQuerySection",
    "RtlCreateActivationContext",
    "NtQueryVirtualMemory",
    "NtCreateThreadEx",
    "NtLockVirtualMemory",
    "NtSuspendProcess",
    "NtResumeProcess",
    "RtlImageNtHeader",
    "NtLoadDriver",
    "NtUnloadDriver",
    "RtlDosPathNameToNtPathName_U",
    "NtOpenEvent",
    "NtCreateEvent",
    "NtQueueApcThread",
    "RtlEncodeSystemPointer",
    "RtlQueueApcWow64Thread",
    "NtWow64QueryInformationProcess64",
    "NtWow64ReadVirtualMemory64",
    "NtWow64WriteVirtualMemory64",
};

constexpr const char* kernel32Names[] = {
    "Wow64GetThreadContext", "Wow64SetThreadContext",      "Wow64SuspendThread",
    "GetProcessDEPPolicy",   "QueryFullProcessImageNameW",
};

// Guards NativeTableLoaded and the load. A spin lock, since the load is short and happens once, and since a std::mutex
// allocates at its first use on some platforms and does not report a failure as std::bad_alloc.
class LoadLock {
public:
    LoadLock() {
        while (s_taken.test_and_set(std::memory_order_acquire)) {
            std::this_thread::yield();
        }
    }
    ~LoadLock() { s_taken.clear(std::memory_order_release); }
    LoadLock(const LoadLock&) = delete;
    LoadLock& operator=(const LoadLock&) = delete;

private:
    static inline std::atomic_flag s_taken;
};

} // namespace

bool NativeTableLoaded = false;

NativeFunctionTable& GetNativeFunctionTable() {
    static NativeFunctionTable table;
    return table;
}

void LoadNativeFunctionsOnce() {
    const LoadLock lock;
    if (!NativeTableLoaded) {
        NativeTableLoaded = true; // before the load, so that a failed one is not repeated
        LoadNativeFunctions();
    }
}

void LoadNativeFunctions() {
    NativeFunctionTable& table = GetNativeFunctionTable();
    const platform::ModuleHandle ntdll = platform::GetModuleHandleW(WIDE("ntdll.dll"));
    const platform::ModuleHandle kernel32 = platform::GetModuleHandleW(WIDE("kernel32.dll"));
    for (const char* const name : ntdllNames) {
        LoadNativeFunction(table, name, ntdll);
    }
    for (const char* const name : kernel32Names) {
        LoadNativeFunction(table, name, kernel32);
    }
}

void* LoadNativeFunction(NativeFunctionTable& table, const char* name, platform::ModuleHandle module) {
    void* const address = platform::GetProcAddress(module, name);
    if (address != nullptr) {
        table.emplace(name, address);
    }
    return address;
}
