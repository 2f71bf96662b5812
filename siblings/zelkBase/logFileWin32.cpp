#include "zelkBase/logFile.h"

#include <windows.h>

namespace siblings {

namespace {

class LogFile final : public AppendStream {
public:
    explicit LogFile(HANDLE file) : m_file(file) {}
    ~LogFile() override { CloseHandle(m_file); }
    LogFile(const LogFile&) = delete;
    LogFile& operator=(const LogFile&) = delete;

    size_t Append(std::string_view bytes) override {
        DWORD written = 0;
        WriteFile(m_file, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
        return written;
    }

private:
    const HANDLE m_file;
};

} // namespace

std::unique_ptr<AppendStream> OpenLogFile(const WideString& path) {
    // With the right to append but not to write, the system chooses the position.
    const HANDLE file = CreateFileW(path.c_str(), FILE_APPEND_DATA | SYNCHRONIZE,
                                    FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, OPEN_ALWAYS,
                                    FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        return nullptr;
    }
    return std::make_unique<LogFile>(file);
}

} // namespace siblings
