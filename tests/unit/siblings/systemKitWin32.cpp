#include <windows.h>

#include "kit/siblings/dynamicLibrary.h"
#include "unit/siblings/systemKit.h"

namespace siblingTest {

void SetVariable(const std::string& name, const WideString& value) {
    SetEnvironmentVariableW(std::filesystem::path(name).c_str(), value.empty() ? nullptr : value.c_str());
}

bool RunPrograms(const std::string& name, const std::vector<std::vector<std::string>>& arguments) {
    const std::filesystem::path program = kit::ProgramFolder() / (name + ".exe");
    std::vector<HANDLE> started;
    for (const std::vector<std::string>& list : arguments) {
        std::wstring line = L"\"" + program.wstring() + L"\"";
        for (const std::string& argument : list) {
            line += L" " + std::filesystem::path(argument).wstring();
        }
        STARTUPINFOW startup{};
        startup.cb = sizeof startup;
        PROCESS_INFORMATION process{};
        if (CreateProcessW(program.c_str(), line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                           &process)) {
            CloseHandle(process.hThread);
            started.push_back(process.hProcess);
        }
    }
    bool good = started.size() == arguments.size();
    for (const HANDLE process : started) {
        DWORD code = 1;
        WaitForSingleObject(process, INFINITE);
        good = GetExitCodeProcess(process, &code) && code == 0 && good;
        CloseHandle(process);
    }
    return good;
}

WideString MachineIdOfSystem() {
    HKEY key = nullptr;
    RegOpenKeyExW(HKEY_LOCAL_MACHINE, L"SOFTWARE\\Microsoft\\Cryptography", 0, KEY_READ | KEY_WOW64_64KEY, &key);
    wchar_t text[64] = {};
    DWORD size = sizeof text - sizeof *text;
    RegQueryValueExW(key, L"MachineGuid", nullptr, nullptr, reinterpret_cast<BYTE*>(text), &size);
    RegCloseKey(key);
    return text;
}

} // namespace siblingTest
