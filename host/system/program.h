// A program that a run starts to have a real process behind an event.
#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>

#include "system/childProcess.h"

namespace mordhost {

// The program writes any line to its standard output when it is ready, and ends when its standard input ends. Output
// after that line is not read.
class Program {
public:
    struct Patience {
        std::chrono::milliseconds start{10000}; // from its start until it is ready
        std::chrono::milliseconds end{3000};    // from the end of its standard input until it ends
    };

    // Starts the program `file` without arguments and waits until it is ready. Throws RunError when it does not start,
    // closes its output before a line, or is not ready in time, and Stopped at a stop request; the process has ended
    // then.
    explicit Program(const std::filesystem::path& file);
    Program(const std::filesystem::path& file, const Patience& patience);

    // Ends the process.
    ~Program();
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    uint32_t Id() const { return m_process.Id(); }

    // Asks the process to end and does not wait.
    void LetGo() { m_process.CloseInput(); }

    // Asks the process to end and waits at most Patience::end. Returns whether it has ended; the destructor kills it
    // otherwise, without a second wait.
    bool End();

private:
    void WaitUntilReady(const std::filesystem::path& file);

    const Patience m_patience;
    ChildProcess m_process;
    bool m_waitedFor = false;
};

} // namespace mordhost
