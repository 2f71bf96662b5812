#include "appendFile.h"

#include <stdexcept>

#include <windows.h>

namespace bench {

AppendFile::AppendFile(const std::filesystem::path& path)
    : m_file(CreateFileW(path.c_str(), FILE_APPEND_DATA | SYNCHRONIZE,
                         FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, OPEN_ALWAYS,
                         FILE_ATTRIBUTE_NORMAL, nullptr)) {
    if (m_file == INVALID_HANDLE_VALUE) {
        throw std::runtime_error("cannot open " + path.string());
    }
}

AppendFile::~AppendFile() {
    CloseHandle(m_file);
}

void AppendFile::Append(std::string_view bytes) const {
    DWORD written = 0;
    if (WriteFile(m_file, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr) == 0 ||
        written != bytes.size()) {
        throw std::runtime_error("a write has failed");
    }
}

} // namespace bench
