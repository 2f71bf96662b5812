// A child process with pipes as its standard input and output. One body per platform.
#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace mordhost {

class ChildProcess {
public:
    // Starts the program `file` without arguments. Its standard error is the null device. It inherits no other handle
    // of this process and receives no keyboard interruption. Throws RunError.
    explicit ChildProcess(const std::filesystem::path& file) : ChildProcess(file, {}) {}

    // As above, with arguments of ASCII letters, digits and hyphens.
    ChildProcess(const std::filesystem::path& file, const std::vector<std::string>& arguments);

    // Closes the pipes. Kills the process unless WaitForEnd has returned true.
    ~ChildProcess();
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    // The process id. The system does not reuse it while this object exists.
    uint32_t Id() const;

    enum class Heard { line, nothing, end };

    // Waits at most `time` for output of the process. Returns `line` if a line feed was in it, `end` if the process has
    // closed its standard output, and `nothing` otherwise, possibly before `time` has passed.
    Heard Listen(std::chrono::milliseconds time);

    // Writes all of `text` to the standard input of the process. Waits while the pipe is full. Returns false if the
    // process has closed it.
    bool Write(std::string_view text);

    // Reads exactly `size` bytes of the standard output of the process. Waits for them. Returns false if the output
    // ends before. Do not mix with Listen, which discards what it reads.
    bool Read(char* data, size_t size);

    // Closes the pipe to the standard input of the process.
    void CloseInput();

    // Waits at most `time` for the process to end and returns whether it has ended.
    bool WaitForEnd(std::chrono::milliseconds time);

private:
    struct State;
    std::unique_ptr<State> m_state;
};

// `file` with the extension of programs on this system, unless it has an extension.
std::filesystem::path WithProgramEnding(const std::filesystem::path& file);

} // namespace mordhost
