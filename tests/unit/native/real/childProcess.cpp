#include "unit/native/real/childProcess.h"

#include <algorithm>
#include <sstream>
#include <stdexcept>

#include <windows.h>

#include "kit/siblings/dynamicLibrary.h"
#include "kit/text/utf.h"

namespace {

constexpr int ownBits = sizeof(void*) * 8;

// Both ends of a pipe. The child inherits its end.
struct Pipe {
    HANDLE read = nullptr;
    HANDLE write = nullptr;

    explicit Pipe(HANDLE Pipe::*ofThisProcess) {
        SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
        if (!CreatePipe(&read, &write, &inherited, 0) ||
            !SetHandleInformation(this->*ofThisProcess, HANDLE_FLAG_INHERIT, 0)) {
            throw std::runtime_error("no pipe for a child process");
        }
    }
};

} // namespace

std::filesystem::path ChildProgram(int bits) {
    const std::filesystem::path folder =
        bits == ownBits ? kit::ProgramFolder() : std::filesystem::path(MORDREV_OTHER_WIDTH_TESTS);
    return std::filesystem::absolute(folder / "nativeChild.exe");
}

std::string ProgramOf(platform::Handle process) {
    std::wstring path(32768, L'\0');
    DWORD length = static_cast<DWORD>(path.size());
    if (!QueryFullProcessImageNameW(process, 0, path.data(), &length)) {
        throw std::runtime_error("the system does not tell the program of a process");
    }
    path.resize(length);
    return kit::ToNarrow(path);
}

std::string LowerCase(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return text;
}

ChildProcess::ChildProcess(int bits) : m_program(ChildProgram(bits)) {
    if (!std::filesystem::exists(m_program)) {
        throw std::runtime_error("there is no " + m_program.string() +
                                 "; the tests of both widths of Windows have to be " +
                                 "built (presets windows-x86 and windows-x64)");
    }
    Pipe input(&Pipe::write);
    Pipe output(&Pipe::read);
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdInput = input.read;
    startup.hStdOutput = output.write;
    startup.hStdError = GetStdHandle(STD_ERROR_HANDLE);
    PROCESS_INFORMATION made{};
    const bool started = CreateProcessW(m_program.c_str(), nullptr, nullptr, nullptr, TRUE, 0, nullptr, nullptr,
                                        &startup, &made) != FALSE;
    const DWORD error = GetLastError();
    CloseHandle(input.read);
    CloseHandle(output.write);
    m_input = input.write;
    m_output = output.read;
    m_process = made.hProcess;
    m_thread = made.hThread;
    m_id = made.dwProcessId;
    if (!started || ReadLine() != "ready") {
        Close();
        throw std::runtime_error(m_program.string() + " did not start, error " + std::to_string(error));
    }
}

ChildProcess::~ChildProcess() {
    Close();
}

void ChildProcess::Close() {
    if (m_process != nullptr) {
        TerminateProcess(m_process, 1);
    }
    for (const HANDLE handle : {m_input, m_output, m_thread, m_process}) {
        if (handle != nullptr) {
            CloseHandle(handle);
        }
    }
}

std::vector<std::string> ChildProcess::Tell(const std::string& command) {
    const std::string line = command + "\n";
    DWORD written = 0;
    if (!WriteFile(m_input, line.data(), static_cast<DWORD>(line.size()), &written, nullptr)) {
        throw std::runtime_error("the child process does not listen: " + command);
    }
    std::istringstream answer(ReadLine());
    std::string word;
    answer >> word;
    if (word != "done") {
        throw std::runtime_error("the child process could not: " + command);
    }
    std::vector<std::string> values;
    while (answer >> word) {
        values.push_back(word);
    }
    return values;
}

void ChildProcess::End() {
    DWORD written = 0;
    WriteFile(m_input, "exit\n", 5, &written, nullptr);
    if (WaitForSingleObject(m_process, 10000) != WAIT_OBJECT_0) {
        throw std::runtime_error("the child process did not end");
    }
}

std::string ChildProcess::ReadLine() {
    std::string line;
    char c = 0;
    DWORD count = 0;
    while (ReadFile(m_output, &c, 1, &count, nullptr) && count == 1 && c != '\n') {
        line += c;
    }
    return line;
}
