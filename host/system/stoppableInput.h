// A file or the standard input, read block by block; each platform has one body of this.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <system_error>

namespace mordhost {

// A request to stop breaks off the wait for what a pipe or a terminal brings. For one thread.
class StoppableInput {
public:
    StoppableInput() = default;
    ~StoppableInput();
    StoppableInput(const StoppableInput&) = delete;
    StoppableInput& operator=(const StoppableInput&) = delete;

    // The object reads nothing before one of these.
    std::error_code Open(const std::filesystem::path& path);
    void TakeStandardInput();

    // Whether it is a file with a size, and not a pipe, a terminal or another device.
    bool IsRegular() const;

    // The size of such a file in bytes.
    uint64_t Size() const;

    // Waits for the next bytes, writes `size` of them at most to `to`, and returns how many. 0: the end, or a request
    // to stop was made, or `error` is set.
    size_t Read(char* to, size_t size, std::error_code& error);

private:
    int m_file = -1; // of the C runtime
    bool m_isOwn = false;
};

} // namespace mordhost
