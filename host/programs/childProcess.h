// A process that was started with a pipe at its standard input and one at its standard output; each platform has one
// body of this.
#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <memory>

namespace mordhost {

class ChildProcess {
public:
    // Starts the program in `file`, without arguments. Its standard error goes nowhere; it gets nothing else of this
    // process that is open, and no interruption from the keyboard. Throws RunError.
    explicit ChildProcess(const std::filesystem::path& file);

    // Closes the pipes, and ends the process by force if it has not been seen to end.
    ~ChildProcess();
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    // The system's id of the process, which goes to no other one as long as this object lives.
    uint32_t Id() const;

    enum class Heard { line, nothing, end };

    // Waits no longer than `time` for the process to write, and tells whether a line feed was in it, or the process has
    // closed its standard output. May come back early with nothing.
    Heard Listen(std::chrono::milliseconds time);

    // Lets the process read the end of its standard input.
    void CloseInput();

    // Waits no longer than `time` for the end of the process, and tells whether it has ended.
    bool WaitForEnd(std::chrono::milliseconds time);

private:
    struct State;
    std::unique_ptr<State> m_state;
};

// `file` with the ending that the system wants of programs, where it has no ending at all.
std::filesystem::path WithProgramEnding(const std::filesystem::path& file);

} // namespace mordhost
