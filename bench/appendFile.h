// A file that is only appended to, opened as the sibling's logger opens its own: what a log record cannot do without.
#pragma once

#include <filesystem>
#include <string_view>

namespace bench {

class AppendFile {
public:
    // Makes the file when there is none. Throws std::runtime_error.
    explicit AppendFile(const std::filesystem::path& path);
    ~AppendFile();
    AppendFile(const AppendFile&) = delete;
    AppendFile& operator=(const AppendFile&) = delete;

    // One call of the system. Throws std::runtime_error.
    void Append(std::string_view bytes) const;

private:
    void* m_file;
};

} // namespace bench
