// Temporary files of one run.
#pragma once

#include <filesystem>
#include <string>

namespace mordhost {

// Creates a directory that only the current user can enter, at the first use, and removes it with its files at the end.
class TemporaryFiles {
public:
    TemporaryFiles() = default;
    ~TemporaryFiles();
    TemporaryFiles(const TemporaryFiles&) = delete;
    TemporaryFiles& operator=(const TemporaryFiles&) = delete;

    // A new path in the directory. Throws RunError.
    std::filesystem::path NewPath();

private:
    std::filesystem::path m_directory;
    size_t m_count = 0;
};

} // namespace mordhost
