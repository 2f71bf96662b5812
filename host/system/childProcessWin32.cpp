#include "system/childProcess.h"

#include <algorithm>
#include <iterator>
#include <string>
#include <system_error>
#include <vector>

#include <windows.h>

#include "system/filePath.h"
#include "system/handleWin32.h"
#include "system/lastErrorWin32.h"
#include "system/runError.h"

namespace mordhost {

namespace {

bool MakePipe(OwnedHandle& reading, OwnedHandle& writing) {
    HANDLE ends[2] = {};
    if (!CreatePipe(&ends[0], &ends[1], nullptr, 0)) {
        return false;
    }
    reading.reset(ends[0]);
    writing.reset(ends[1]);
    return true;
}

OwnedHandle OpenNullDevice() {
    return Own(CreateFileW(L"NUL", GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING,
                           FILE_ATTRIBUTE_NORMAL, nullptr));
}

// The only handles that a new process inherits. Must outlive the start of the process.
class InheritedHandles {
public:
    ~InheritedHandles() {
        if (m_isMade) {
            DeleteProcThreadAttributeList(List());
        }
    }
    InheritedHandles() = default;
    InheritedHandles(const InheritedHandles&) = delete;
    InheritedHandles& operator=(const InheritedHandles&) = delete;

    LPPROC_THREAD_ATTRIBUTE_LIST List() { return reinterpret_cast<LPPROC_THREAD_ATTRIBUTE_LIST>(m_memory.data()); }

    bool Make(const std::vector<HANDLE>& handles) {
        m_handles = handles;
        for (const HANDLE handle : m_handles) {
            if (!SetHandleInformation(handle, HANDLE_FLAG_INHERIT, HANDLE_FLAG_INHERIT)) {
                return false;
            }
        }
        SIZE_T size = 0;
        InitializeProcThreadAttributeList(nullptr, 1, 0, &size);
        m_memory.resize(size);
        m_isMade = InitializeProcThreadAttributeList(List(), 1, 0, &size) != 0;
        return m_isMade && UpdateProcThreadAttribute(List(), 0, PROC_THREAD_ATTRIBUTE_HANDLE_LIST, m_handles.data(),
                                                     m_handles.size() * sizeof(HANDLE), nullptr, nullptr) != 0;
    }

private:
    std::vector<HANDLE> m_handles;
    std::vector<unsigned char> m_memory;
    bool m_isMade = false;
};

// Wine sometimes fails to start a process before any of its code runs and reports an internal error, which a program
// cannot cause. Only this error is retried.
bool CreateWithinTries(const std::filesystem::path& image, std::wstring& command, STARTUPINFOEXW& start,
                       PROCESS_INFORMATION& process) {
    constexpr int tries = 3;
    // A separate process group receives no Ctrl-C: mordhost ends its programs itself.
    constexpr DWORD flags = EXTENDED_STARTUPINFO_PRESENT | CREATE_NEW_PROCESS_GROUP;
    for (int i = 0; i < tries; ++i) {
        if (CreateProcessW(image.c_str(), command.data(), nullptr, nullptr, TRUE, flags, nullptr, nullptr,
                           &start.StartupInfo, &process)) {
            return true;
        }
        if (GetLastError() != ERROR_INTERNAL_ERROR) {
            return false;
        }
    }
    return false;
}

} // namespace

struct ChildProcess::State {
    DWORD id = 0;
    OwnedHandle process;
    OwnedHandle input;
    OwnedHandle output;
};

ChildProcess::ChildProcess(const std::filesystem::path& file, const std::vector<std::string>& arguments)
    : m_state(std::make_unique<State>()) {
    OwnedHandle itsInput;
    OwnedHandle itsOutput;
    const OwnedHandle nowhere = OpenNullDevice();
    InheritedHandles inherited;
    const bool prepared = MakePipe(itsInput, m_state->input) && MakePipe(m_state->output, itsOutput) && nowhere &&
                          inherited.Make({itsInput.get(), itsOutput.get(), nowhere.get()});
    STARTUPINFOEXW start{};
    start.StartupInfo.cb = sizeof start;
    start.StartupInfo.dwFlags = STARTF_USESTDHANDLES;
    start.StartupInfo.hStdInput = itsInput.get();
    start.StartupInfo.hStdOutput = itsOutput.get();
    start.StartupInfo.hStdError = nowhere.get();
    start.lpAttributeList = inherited.List();
    // Absolute, so that the system reports the full image path in every current directory.
    const std::filesystem::path image = std::filesystem::absolute(file).make_preferred();
    std::wstring command = L'"' + image.native() + L'"'; // a file name cannot contain a quotation mark
    for (const std::string& argument : arguments) {
        command += L' ' + std::wstring(argument.begin(), argument.end());
    }
    PROCESS_INFORMATION process{};
    if (!prepared || !CreateWithinTries(image, command, start, process)) {
        throw RunError("cannot start the program " + Utf8Of(file) + ": " + LastError().message());
    }
    CloseHandle(process.hThread);
    m_state->process.reset(process.hProcess);
    m_state->id = process.dwProcessId;
}

ChildProcess::~ChildProcess() {
    m_state->input.reset();
    m_state->output.reset();
    if (!WaitForEnd(std::chrono::milliseconds(0))) {
        TerminateProcess(m_state->process.get(), 1);
        WaitForSingleObject(m_state->process.get(), INFINITE);
    }
}

uint32_t ChildProcess::Id() const {
    return m_state->id;
}

ChildProcess::Heard ChildProcess::Listen(std::chrono::milliseconds time) {
    constexpr std::chrono::milliseconds pause(5);
    DWORD waiting = 0;
    if (!PeekNamedPipe(m_state->output.get(), nullptr, 0, nullptr, &waiting, nullptr)) {
        return Heard::end;
    }
    if (waiting == 0) { // there is no way to wait for data in an anonymous pipe
        Sleep(static_cast<DWORD>(std::min(time, pause).count()));
        return Heard::nothing;
    }
    char text[256];
    DWORD length = 0;
    if (!ReadFile(m_state->output.get(), text, std::min(waiting, static_cast<DWORD>(sizeof text)), &length, nullptr)) {
        return Heard::end;
    }
    return std::find(text, text + length, '\n') != text + length ? Heard::line : Heard::nothing;
}

bool ChildProcess::Write(std::string_view text) {
    while (!text.empty()) {
        DWORD written = 0;
        const auto size = static_cast<DWORD>(std::min<size_t>(text.size(), 1U << 20U));
        if (!WriteFile(m_state->input.get(), text.data(), size, &written, nullptr)) {
            return false;
        }
        text.remove_prefix(written);
    }
    return true;
}

bool ChildProcess::Read(char* data, size_t size) {
    while (size > 0) {
        DWORD length = 0;
        const auto part = static_cast<DWORD>(std::min<size_t>(size, 1U << 20U));
        if (!ReadFile(m_state->output.get(), data, part, &length, nullptr)) {
            return false;
        }
        data += length;
        size -= length;
    }
    return true;
}

void ChildProcess::CloseInput() {
    m_state->input.reset();
}

bool ChildProcess::WaitForEnd(std::chrono::milliseconds time) {
    return WaitForSingleObject(m_state->process.get(), static_cast<DWORD>(time.count())) == WAIT_OBJECT_0;
}

std::filesystem::path WithProgramEnding(const std::filesystem::path& file) {
    std::filesystem::path whole = file;
    return file.has_extension() ? whole : whole.replace_extension(".exe");
}

} // namespace mordhost
