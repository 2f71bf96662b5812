#include "unit/native/real/systemTellsPeb.h"

#include <cstdint>

#include <windows.h>

bool SystemTellsPeb(platform::Handle process) {
    using Function = int32_t(WINAPI*)(HANDLE, uint32_t, void*, uint32_t, uint32_t*);
    const auto query = reinterpret_cast<Function>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "NtQueryInformationProcess")));
    constexpr uint32_t processWow64Information = 26;
    uint64_t peb = 0; // stays so for a 64-bit process
    query(process, processWow64Information, &peb, sizeof peb, nullptr);
    return peb != 1;
}
