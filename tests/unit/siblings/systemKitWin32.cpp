#include <windows.h>

#include "unit/siblings/systemKit.h"

namespace siblingTest {

std::filesystem::path ProgramFolder() {
    wchar_t path[1024];
    const DWORD length = GetModuleFileNameW(nullptr, path, 1024);
    return std::filesystem::path(std::wstring(path, length)).parent_path();
}

std::filesystem::path LibraryFile(const std::string& name) {
    return ProgramFolder().parent_path() / "bin" / (name + ".dll");
}

void* LoadLibraryFile(const std::filesystem::path& file) {
    return LoadLibraryW(file.c_str());
}

void* FindExport(void* library, const char* name) {
    return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(library), name));
}

void* FindLoadedLibrary(const std::string& name) {
    return GetModuleHandleW(std::filesystem::path(name + ".dll").c_str());
}

void SetVariable(const std::string& name, const WideString& value) {
    SetEnvironmentVariableW(std::filesystem::path(name).c_str(), value.empty() ? nullptr : value.c_str());
}

bool RunPrograms(const std::string& name, const std::vector<std::vector<std::string>>& arguments) {
    const std::filesystem::path program = ProgramFolder() / (name + ".exe");
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
