#include "unit/native/firstUseSystem.h"

#include <cstdarg>
#include <cstddef>
#include <cstring>
#include <string_view>
#include <thread>

#include "kit/system/published/processLayouts.h"
#include "kit/system/published/queryLayouts.h"
#include "native/gateEnter.h"
#include "platform/callConv.h"
#include "platform/platform.h"
#include "platform/processApi.h"

using namespace published;

std::atomic<int> firstUse::namesAskedFor = 0;

namespace {

constexpr char resolverName[] = "LdrGetProcedureAddress";
constexpr WideChar ntdllName[] = WIDE("ntdll.dll");
constexpr uint32_t resolverPlace = 0x400; // within the module

// An ntdll with one export, and the way to it: TEB, PEB and loader list.
struct Half64 {
    Teb<uint64_t> teb{};
    Peb<uint64_t> peb{};
    PebLdrData<uint64_t> ldr{};
    LdrDataTableEntry7<uint64_t> entry{};

    struct Module {
        ImageDosHeader dos{};
        ImageNtHeaders64 headers{};
        ImageExportDirectory directory{};
        uint32_t functions[1] = {resolverPlace};
        uint32_t names[1] = {};
        uint16_t ordinals[1] = {0};
        char name[sizeof resolverName] = {};
    } ntdll{};

    Half64() {
        teb.ProcessEnvironmentBlock = Address(&peb);
        peb.Ldr = Address(&ldr);
        ldr.InLoadOrderModuleList.Flink = Address(&entry);
        entry.before.InLoadOrderLinks.Flink = Address(&ldr) + offsetof(PebLdrData<uint64_t>, InLoadOrderModuleList);
        entry.before.DllBase = Address(&ntdll);
        entry.before.BaseDllName = {sizeof ntdllName - sizeof(WideChar), sizeof ntdllName, Address(ntdllName)};

        ntdll.dos.e_lfanew = offsetof(Module, headers);
        ntdll.headers.OptionalHeader.ExportDirectory.VirtualAddress = offsetof(Module, directory);
        ntdll.directory.NumberOfFunctions = 1;
        ntdll.directory.NumberOfNames = 1;
        ntdll.directory.AddressOfFunctions = offsetof(Module, functions);
        ntdll.directory.AddressOfNames = offsetof(Module, names);
        ntdll.directory.AddressOfNameOrdinals = offsetof(Module, ordinals);
        ntdll.names[0] = offsetof(Module, name);
        std::memcpy(ntdll.name, resolverName, sizeof resolverName);
    }

    static uint64_t Address(const void* place) { return reinterpret_cast<uintptr_t>(place); }
};

const Half64 half64;

thread_local uint32_t lastErrorSet = 0;
thread_local uint32_t lastStatus = 0;

int module;

int32_t MORD_STDCALL QueryAnything(uint32_t, void*, uint32_t, uint32_t*) {
    return firstUse::statusOfQueries;
}

uint32_t MORD_STDCALL StatusToError(uint32_t status) {
    return status ^ 0xFFFF;
}

void MORD_STDCALL SetError(uint32_t error) {
    lastErrorSet = error;
}

} // namespace

uint64_t firstUse::NtdllBase() {
    return Half64::Address(&half64.ntdll);
}

uint32_t firstUse::LastErrorSet() {
    return lastErrorSet;
}

namespace platform {

ModuleHandle GetModuleHandleW(const WideChar*) {
    return &module;
}

// Slow, so that a second thread comes while the first one still loads.
void* GetProcAddress(ModuleHandle, const char* name) {
    firstUse::namesAskedFor.fetch_add(1, std::memory_order_relaxed);
    std::this_thread::yield();
    const std::string_view wanted = name;
    if (wanted == "RtlNtStatusToDosError") {
        return reinterpret_cast<void*>(&StatusToError);
    }
    if (wanted == "RtlSetLastWin32Error") {
        return reinterpret_cast<void*>(&SetError);
    }
    return reinterpret_cast<void*>(&QueryAnything);
}

Handle GetCurrentProcess() {
    return nullptr;
}

bool IsWow64Process(Handle, int32_t* isWow64) {
    *isWow64 = 1;
    return true;
}

bool ReadProcessMemory(Handle, uintptr_t, void*, size_t, size_t*) {
    return false;
}

bool GetThreadContext(Handle, void*) {
    return false;
}

// There is nothing else in this system.
Handle OpenProcess(uint32_t, bool, uint32_t) {
    return nullptr;
}

Handle OpenThread(uint32_t, bool, uint32_t) {
    return nullptr;
}

void CloseHandle(Handle) {}

uint32_t GetProcessId(Handle) {
    return 0;
}

SystemInfo GetNativeSystemInfo() {
    return {9};
}

Handle CreateToolhelp32Snapshot(uint32_t, uint32_t) {
    return nullptr;
}

bool Thread32First(Handle, ThreadEntry*) {
    return false;
}

bool Thread32Next(Handle, ThreadEntry*) {
    return false;
}

uint32_t QueryDosDeviceW(const WideChar*, WideChar*, uint32_t) {
    return 0;
}

void* VirtualAlloc(size_t) {
    return nullptr;
}

void VirtualFree(void*) {}

uint32_t LastStatusValue() {
    return lastStatus;
}

void SetLastStatusValue(uint32_t status) {
    lastStatus = status;
}

} // namespace platform

extern "C" {

int32_t GateEnabled = 1;

uint64_t GateCall(uint64_t function, int32_t count, ...) {
    if (function != firstUse::NtdllBase() + resolverPlace) {
        return firstUse::statusOfGateCalls;
    }
    uint64_t arguments[4] = {};
    va_list list;
    va_start(list, count);
    for (uint64_t& argument : arguments) {
        argument = va_arg(list, uint64_t);
    }
    va_end(list);
    std::memcpy(reinterpret_cast<void*>(arguments[3]), &firstUse::resolved, sizeof firstUse::resolved);
    return 0;
}

void GateCopyIn(void* destination, uint64_t source, uint32_t size) {
    std::memcpy(destination, reinterpret_cast<const void*>(source), size);
    std::this_thread::yield();
}

bool GateCompare(const void* buffer, uint64_t address, uint32_t size) {
    return std::memcmp(buffer, reinterpret_cast<const void*>(address), size) == 0;
}

uint64_t GateThreadBlock() {
    return Half64::Address(&half64.teb);
}
}
