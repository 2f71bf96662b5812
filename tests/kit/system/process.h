// Programs that a test runs.
#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "kit/system/temporaryDirectory.h"

namespace mordhostTest {

struct ProcessResult {
    int code = -1; // exit code; -1 for a process that did not end by itself
    std::string output;
    std::string error;
};

// What the standard output of a process is.
enum class StandardOutput {
    file,       // whose text the result has
    closed,     // not open at all
    readOnly,   // open, but not for writing
    unreadPipe, // a pipe whose other end is closed
    fullPipe,   // a pipe from which nobody takes anything, so that it is full soon
};

struct ProcessSetup {
    std::string program; // UTF-8, as all texts here
    std::vector<std::string> arguments;
    std::string input;     // what it reads from its standard input
    std::string directory; // in which it runs; empty: that of the test
    StandardOutput output = StandardOutput::file;
    bool inputStaysOpen = false; // it reads no end behind the input, as long as it runs
};

// Runs the program to its end. None outlives its test for long: after four minutes it is ended.
ProcessResult RunProcess(const ProcessSetup& setup);

// Whether the process with this id is there and has not ended.
bool IsRunning(uint32_t id);

// A process with files for its standard streams that runs while the test goes on.
class BackgroundProcess {
public:
    explicit BackgroundProcess(const ProcessSetup& setup);
    ~BackgroundProcess();
    BackgroundProcess(const BackgroundProcess&) = delete;
    BackgroundProcess& operator=(const BackgroundProcess&) = delete;

    // What it has written so far.
    std::string Output() const { return m_directory.Read("output"); }
    std::string Error() const { return m_directory.Read("error"); }

    // Sends it an interruption, as the user would: SIGINT, or Ctrl-C from its console.
    void Interrupt() const;

    // Posix alone: sends it another signal; its process id.
    void Send(int signal) const;
    uint32_t Id() const;

    ProcessResult Wait();

private:
    struct State;

    TemporaryDirectory m_directory;
    std::unique_ptr<State> m_state;
};

// Waits until `isSo` is, two minutes at most, and returns whether it is.
template <typename IsSo>
bool WaitUntil(IsSo isSo) {
    constexpr std::chrono::milliseconds pause(10);
    constexpr int looks = 12000;
    for (int i = 0; i < looks && !isSo(); ++i) {
        std::this_thread::sleep_for(pause);
    }
    return isSo();
}

} // namespace mordhostTest
