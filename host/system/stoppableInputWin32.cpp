#include "system/stoppableInput.h"

#include <algorithm>
#include <cerrno>

#include <windows.h>
// After windows.h, which it needs.
#include <fcntl.h>
#include <io.h>

#include "system/breakableReadWin32.h"
#include "system/stopRequest.h"

namespace mordhost {

namespace {

HANDLE HandleOf(int file) {
    return reinterpret_cast<HANDLE>(_get_osfhandle(file));
}

} // namespace

StoppableInput::~StoppableInput() {
    if (m_isOwn) {
        _close(m_file);
    }
}

std::error_code StoppableInput::Open(const std::filesystem::path& path) {
    m_file = _wopen(path.c_str(), _O_RDONLY | _O_BINARY | _O_NOINHERIT);
    m_isOwn = m_file >= 0;
    return m_isOwn ? std::error_code() : std::error_code(errno, std::generic_category());
}

void StoppableInput::TakeStandardInput() {
    m_file = 0;
}

bool StoppableInput::IsRegular() const {
    return GetFileType(HandleOf(m_file)) == FILE_TYPE_DISK;
}

uint64_t StoppableInput::Size() const {
    LARGE_INTEGER size{};
    return GetFileSizeEx(HandleOf(m_file), &size) ? static_cast<uint64_t>(size.QuadPart) : 0;
}

size_t StoppableInput::Read(char* to, size_t size, std::error_code& error) {
    const auto atMost = static_cast<DWORD>(std::min<size_t>(size, 1U << 30U));
    while (true) {
        const BreakableRead breakable;
        if (StopRequested()) {
            return 0;
        }
        DWORD length = 0;
        SetLastError(ERROR_SUCCESS);
        const BOOL done = ReadFile(HandleOf(m_file), to, atMost, &length, nullptr);
        const DWORD code = GetLastError();
        // At Ctrl-C a console aborts the read; the event arrives on another thread.
        if (code == ERROR_OPERATION_ABORTED && length == 0) {
            Sleep(1);
            continue;
        }
        if (!done && code != ERROR_BROKEN_PIPE) { // ERROR_BROKEN_PIPE is the end of a pipe
            error = {static_cast<int>(code), std::system_category()};
            return 0;
        }
        return length;
    }
}

} // namespace mordhost
