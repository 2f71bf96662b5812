#include "native/nativeFunctionTable.h"

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

} // namespace

bool NativeTableLoaded = false;

NativeFunctionTable& GetNativeFunctionTable() {
    static NativeFunctionTable table;
    return table;
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
