#include <stdexcept>

#include <windows.h>

#include "host/process.h"

namespace mordhostTest {

namespace {

constexpr DWORD longestRun = 240000; // milliseconds

// One argument by the rules by which the C runtime and the shell take a command line apart.
std::wstring Quoted(const std::string& argument) {
    const std::filesystem::path text = mordhost::PathOf(argument);
    std::wstring quoted = L"\"";
    size_t backslashes = 0;
    for (const wchar_t c : text.native()) {
        if (c == L'"') {
            quoted.append(backslashes + 1, L'\\'); // so that the quote stands for itself
        }
        backslashes = c == L'\\' ? backslashes + 1 : 0;
        quoted += c;
    }
    quoted.append(backslashes, L'\\');
    return quoted + L'"';
}

HANDLE OpenForChild(const std::string& name, DWORD access) {
    SECURITY_ATTRIBUTES inheritable = {sizeof inheritable, nullptr, TRUE};
    return CreateFileW(mordhost::PathOf(name).c_str(), access, FILE_SHARE_READ | FILE_SHARE_WRITE, &inheritable,
                       OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
}

} // namespace

ProcessResult RunProcess(const ProcessSetup& setup) {
    const TemporaryDirectory files;
    std::wstring command = Quoted(setup.program);
    for (const std::string& argument : setup.arguments) {
        command += L' ' + Quoted(argument);
    }
    STARTUPINFOW start{};
    start.cb = sizeof start;
    start.dwFlags = STARTF_USESTDHANDLES;
    start.hStdInput = OpenForChild(files.Write("input", setup.input), GENERIC_READ);
    start.hStdOutput = OpenForChild(files.Write("output", ""), GENERIC_WRITE);
    start.hStdError = OpenForChild(files.Write("error", ""), GENERIC_WRITE);
    const std::filesystem::path directory = mordhost::PathOf(setup.directory);
    PROCESS_INFORMATION process{};
    const BOOL started = CreateProcessW(nullptr, command.data(), nullptr, nullptr, TRUE, 0, nullptr,
                                        directory.empty() ? nullptr : directory.c_str(), &start, &process);
    const DWORD error = GetLastError();
    for (const HANDLE handle : {start.hStdInput, start.hStdOutput, start.hStdError}) {
        CloseHandle(handle);
    }
    if (!started) {
        throw std::runtime_error("cannot start " + setup.program + ": error " + std::to_string(error));
    }
    ProcessResult result;
    DWORD code = 0;
    const bool ended = WaitForSingleObject(process.hProcess, longestRun) == WAIT_OBJECT_0 &&
                       GetExitCodeProcess(process.hProcess, &code) != 0;
    if (!ended) {
        TerminateProcess(process.hProcess, 1);
    }
    result.code = ended ? static_cast<int>(code) : -1;
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    result.output = files.Read("output");
    result.error = files.Read("error");
    return result;
}

bool IsRunning(uint32_t id) {
    const HANDLE process = OpenProcess(SYNCHRONIZE, FALSE, id);
    if (process == nullptr) {
        return false;
    }
    const bool running = WaitForSingleObject(process, 0) == WAIT_TIMEOUT;
    CloseHandle(process);
    return running;
}

} // namespace mordhostTest
