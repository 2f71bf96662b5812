// Block-wise reading of a file or of the standard input. One body per platform.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <system_error>

namespace mordhost {

// A stop request interrupts the wait for data from a pipe or a terminal. For use by one thread.
class StoppableInput {
public:
    StoppableInput() = default;
    ~StoppableInput();
    StoppableInput(const StoppableInput&) = delete;
    StoppableInput& operator=(const StoppableInput&) = delete;

    // Select what to read. Call one of them first.
    std::error_code Open(const std::filesystem::path& path);
    void TakeStandardInput();

    // True for a regular file; false for a pipe, a terminal or another device.
    bool IsRegular() const;

    // The size of a regular file in bytes.
    uint64_t Size() const;

    // Waits for data and writes at most `size` bytes to `to`. Returns their number. 0 means the end of the input, a
    // stop request, or that `error` is set.
    size_t Read(char* to, size_t size, std::error_code& error);

private:
    int m_file = -1; // descriptor of the C runtime
    bool m_isOwn = false;
};

} // namespace mordhost
