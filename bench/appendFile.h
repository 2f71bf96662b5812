// A file opened for appending, as the sibling's logger opens its log: the floor of a log record.
#pragma once

#include <filesystem>
#include <string_view>

namespace bench {

class AppendFile {
public:
    // Creates the file if it does not exist. Throws std::runtime_error.
    explicit AppendFile(const std::filesystem::path& path);
    ~AppendFile();
    AppendFile(const AppendFile&) = delete;
    AppendFile& operator=(const AppendFile&) = delete;

    // Makes one system call. Throws std::runtime_error.
    void Append(std::string_view bytes) const;

private:
    void* m_file;
};

} // namespace bench
