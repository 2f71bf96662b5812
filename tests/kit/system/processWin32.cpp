#include <stdexcept>
#include <utility>

#include <windows.h>

#include "kit/system/process.h"

namespace kit {

namespace {

constexpr DWORD longestRun = 240000; // milliseconds

// Quotes an argument by the rules of the C runtime and the shell.
std::wstring Quoted(const std::string& argument) {
    const std::filesystem::path text = PathOfUtf8(argument);
    std::wstring quoted = L"\"";
    size_t backslashes = 0;
    for (const wchar_t c : text.native()) {
        if (c == L'"') {
            quoted.append(backslashes + 1, L'\\'); // escape the quotation mark
        }
        backslashes = c == L'\\' ? backslashes + 1 : 0;
        quoted += c;
    }
    quoted.append(backslashes, L'\\');
    return quoted + L'"';
}

struct HandleCloser {
    void operator()(HANDLE handle) const {
        if (handle != INVALID_HANDLE_VALUE) {
            CloseHandle(handle);
        }
    }
};
using OwnedHandle = std::unique_ptr<void, HandleCloser>;

struct Pipe {
    OwnedHandle reading;
    OwnedHandle writing;

    Pipe() {
        HANDLE ends[2] = {};
        if (!CreatePipe(&ends[0], &ends[1], nullptr, 1U << 20U)) {
            throw std::runtime_error("no pipe");
        }
        reading.reset(ends[0]);
        writing.reset(ends[1]);
    }
};

void LetInherit(HANDLE handle) {
    SetHandleInformation(handle, HANDLE_FLAG_INHERIT, HANDLE_FLAG_INHERIT);
}

OwnedHandle OpenForChild(const std::string& name, DWORD access) {
    SECURITY_ATTRIBUTES inheritable = {sizeof inheritable, nullptr, TRUE};
    return OwnedHandle(CreateFileW(PathOfUtf8(name).c_str(), access, FILE_SHARE_READ | FILE_SHARE_WRITE, &inheritable,
                                   OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
}

// Opens the standard input: a file, or a pipe whose other end is `staysOpen`.
OwnedHandle OpenInput(const ProcessSetup& setup, const TemporaryDirectory& files, OwnedHandle& staysOpen) {
    if (!setup.inputStaysOpen) {
        return OpenForChild(files.Write("input", setup.input), GENERIC_READ);
    }
    Pipe pipe;
    DWORD written = 0;
    WriteFile(pipe.writing.get(), setup.input.data(), static_cast<DWORD>(setup.input.size()), &written, nullptr);
    staysOpen = std::move(pipe.writing);
    LetInherit(pipe.reading.get());
    return std::move(pipe.reading);
}

// Opens the standard output. `untaken` is the other end of a pipe that nobody reads.
OwnedHandle OpenOutput(const ProcessSetup& setup, const std::string& file, OwnedHandle& untaken) {
    switch (setup.output) {
    case StandardOutput::file:
        return OpenForChild(file, GENERIC_WRITE);
    case StandardOutput::closed:
        return nullptr;
    case StandardOutput::readOnly:
        return OpenForChild(file, GENERIC_READ);
    case StandardOutput::unreadPipe:
    case StandardOutput::fullPipe: {
        Pipe pipe;
        if (setup.output == StandardOutput::fullPipe) {
            untaken = std::move(pipe.reading);
        }
        LetInherit(pipe.writing.get());
        return std::move(pipe.writing);
    }
    }
    return nullptr;
}

// A console without a window.
class PseudoConsole {
public:
    PseudoConsole() {
        // Not every import library has these functions.
        const HMODULE library = GetModuleHandleW(L"kernelbase.dll");
        const auto create =
            reinterpret_cast<Create*>(reinterpret_cast<void*>(GetProcAddress(library, "CreatePseudoConsole")));
        m_close = reinterpret_cast<Close*>(reinterpret_cast<void*>(GetProcAddress(library, "ClosePseudoConsole")));
        if (create == nullptr || m_close == nullptr ||
            create({80, 25}, m_input.reading.get(), m_output.writing.get(), 0, &m_console) != S_OK) {
            throw std::runtime_error("no pseudo console");
        }
        SIZE_T size = 0;
        InitializeProcThreadAttributeList(nullptr, 1, 0, &size);
        m_memory.resize(size);
        if (!InitializeProcThreadAttributeList(Attributes(), 1, 0, &size) ||
            !UpdateProcThreadAttribute(Attributes(), 0, console, m_console, sizeof m_console, nullptr, nullptr)) {
            throw std::runtime_error("no attributes for a process");
        }
    }
    ~PseudoConsole() {
        DeleteProcThreadAttributeList(Attributes());
        m_close(m_console);
    }
    PseudoConsole(const PseudoConsole&) = delete;
    PseudoConsole& operator=(const PseudoConsole&) = delete;

    // The attributes of a process on this console.
    LPPROC_THREAD_ATTRIBUTE_LIST Attributes() {
        return reinterpret_cast<LPPROC_THREAD_ATTRIBUTE_LIST>(m_memory.data());
    }

private:
    using Create = HRESULT WINAPI(COORD, HANDLE, HANDLE, DWORD, void**);
    using Close = void WINAPI(void*);
    static constexpr DWORD_PTR console = 0x20016; // PROC_THREAD_ATTRIBUTE_PSEUDOCONSOLE

    Pipe m_input;
    Pipe m_output;
    Close* m_close = nullptr;
    void* m_console = nullptr;
    std::vector<unsigned char> m_memory;
};

std::wstring CommandLine(const ProcessSetup& setup) {
    std::wstring command = Quoted(setup.program);
    for (const std::string& argument : setup.arguments) {
        command += L' ' + Quoted(argument);
    }
    return command;
}

// A job that ends its processes when this process ends, also when that is killed.
HANDLE JobOfTest() {
    static const HANDLE job = [] {
        const HANDLE made = CreateJobObjectW(nullptr, nullptr);
        JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits{};
        limits.BasicLimitInformation.LimitFlags = JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE;
        SetInformationJobObject(made, JobObjectExtendedLimitInformation, &limits, sizeof limits);
        return made;
    }();
    return job;
}

// Starts the process on the console, or without one if that is null, and returns its handle.
OwnedHandle Start(const ProcessSetup& setup, PseudoConsole* console, HANDLE input, HANDLE output, HANDLE error) {
    STARTUPINFOEXW start{};
    start.StartupInfo.cb = sizeof start;
    start.StartupInfo.dwFlags = STARTF_USESTDHANDLES;
    start.StartupInfo.hStdInput = input;
    start.StartupInfo.hStdOutput = output;
    start.StartupInfo.hStdError = error;
    start.lpAttributeList = console == nullptr ? nullptr : console->Attributes();
    std::wstring command = CommandLine(setup);
    const std::filesystem::path directory = PathOfUtf8(setup.directory);
    PROCESS_INFORMATION process{};
    if (!CreateProcessW(nullptr, command.data(), nullptr, nullptr, TRUE, EXTENDED_STARTUPINFO_PRESENT, nullptr,
                        directory.empty() ? nullptr : directory.c_str(), &start.StartupInfo, &process)) {
        throw std::runtime_error("cannot start " + setup.program + ": error " + std::to_string(GetLastError()));
    }
    AssignProcessToJobObject(JobOfTest(), process.hProcess);
    CloseHandle(process.hThread);
    return OwnedHandle(process.hProcess);
}

// Waits for the process and returns its exit code. Kills a process that does not end and returns -1.
int CodeOf(HANDLE process) {
    DWORD code = 0;
    if (WaitForSingleObject(process, longestRun) == WAIT_OBJECT_0 && GetExitCodeProcess(process, &code)) {
        return static_cast<int>(code);
    }
    TerminateProcess(process, 1);
    return -1;
}

// The ends of the pipes that the test keeps.
struct OwnEnds {
    OwnedHandle input;
    OwnedHandle output;
};

// Starts the process with its streams in files of `files`.
OwnedHandle StartWithFiles(const ProcessSetup& setup, PseudoConsole* console, const TemporaryDirectory& files,
                           OwnEnds& own) {
    const OwnedHandle input = OpenInput(setup, files, own.input);
    const OwnedHandle output = OpenOutput(setup, files.Write("output", ""), own.output);
    const OwnedHandle error = OpenForChild(files.Write("error", ""), GENERIC_WRITE);
    return Start(setup, console, input.get(), output.get(), error.get());
}

} // namespace

struct BackgroundProcess::State {
    PseudoConsole console;
    OwnEnds own;
    OwnedHandle process;
};

BackgroundProcess::BackgroundProcess(const ProcessSetup& setup) : m_state(std::make_unique<State>()) {
    m_state->process = StartWithFiles(setup, &m_state->console, m_directory, m_state->own);
}

BackgroundProcess::~BackgroundProcess() {
    TerminateProcess(m_state->process.get(), 1);
    WaitForSingleObject(m_state->process.get(), INFINITE);
}

// Another process on the same console sends Ctrl-C.
void BackgroundProcess::Interrupt() const {
    const ProcessSetup setup = {TEST_KIT_INTERRUPTS, {}, "", ""};
    CodeOf(Start(setup, &m_state->console, nullptr, nullptr, nullptr).get());
}

ProcessResult BackgroundProcess::Wait() {
    const int code = CodeOf(m_state->process.get());
    return {code, Output(), Error()};
}

ProcessResult RunProcess(const ProcessSetup& setup) {
    const TemporaryDirectory files;
    OwnEnds own;
    const OwnedHandle process = StartWithFiles(setup, nullptr, files, own);
    const int code = CodeOf(process.get());
    return {code, files.Read("output"), files.Read("error")};
}

bool IsRunning(uint32_t id) {
    const OwnedHandle process(OpenProcess(SYNCHRONIZE, FALSE, id));
    return process && WaitForSingleObject(process.get(), 0) == WAIT_TIMEOUT;
}

} // namespace kit
