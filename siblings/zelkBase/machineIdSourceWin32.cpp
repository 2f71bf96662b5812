#include "zelkBase/machineIdSource.h"

#include <windows.h>

namespace siblings {

namespace {

// Returns the value in one view of the registry, or an empty text.
WideString ReadMachineGuid(REGSAM view) {
    HKEY key = nullptr;
    if (RegOpenKeyExW(HKEY_LOCAL_MACHINE, L"SOFTWARE\\Microsoft\\Cryptography", 0, KEY_QUERY_VALUE | view, &key) !=
        ERROR_SUCCESS) {
        return {};
    }
    // A longer value is not a machine id and is refused as a whole. RegGetValueW guarantees the NUL.
    wchar_t text[128];
    DWORD size = sizeof text;
    const LSTATUS status = RegGetValueW(key, nullptr, L"MachineGuid", RRF_RT_REG_SZ, nullptr, text, &size);
    RegCloseKey(key);
    return status == ERROR_SUCCESS ? WideString(text) : WideString();
}

} // namespace

// The installation writes the value to the native view; a 32-bit process gets another view by default.
WideString ReadMachineId() {
    WideString id = ReadMachineGuid(KEY_WOW64_64KEY);
    return id.empty() ? ReadMachineGuid(KEY_WOW64_32KEY) : id;
}

} // namespace siblings
