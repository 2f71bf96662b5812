#include "unit/native/real/systemTellsPeb.h"

#include <windows.h>

bool SystemTellsPeb(platform::Handle process) {
    BOOL isWow64 = FALSE;
    return (IsWow64Process(process, &isWow64) && isWow64) ||
           GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "NtWow64QueryInformationProcess64") != nullptr;
}
