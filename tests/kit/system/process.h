// Runs programs.
#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "kit/system/temporaryDirectory.h"

namespace kit {

struct ProcessResult {
    int code = -1; // exit code; -1 for a process that was killed
    std::string output;
    std::string error;
};

// The standard output of a process.
enum class StandardOutput {
    file,       // its text is in the result
    closed,     // not open
    readOnly,   // open, but not for writing
    unreadPipe, // a pipe whose other end is closed
    fullPipe,   // a pipe that nobody reads, which is full soon
};

struct ProcessSetup {
    std::string program; // UTF-8, as all texts here
    std::vector<std::string> arguments;
    std::string input;     // the text of its standard input
    std::string directory; // working directory; empty: that of the test
    StandardOutput output = StandardOutput::file;
    bool inputStaysOpen = false; // the standard input does not end after `input`
};

// Runs the program to its end, for at most four minutes. The process does not outlive the test.
ProcessResult RunProcess(const ProcessSetup& setup);

// Whether the process with this id exists and has not ended.
bool IsRunning(uint32_t id);

// A process that runs concurrently with the test, with files as its standard streams. The destructor kills it. It does
// not outlive the test, also if that is killed.
class BackgroundProcess {
public:
    explicit BackgroundProcess(const ProcessSetup& setup);
    ~BackgroundProcess();
    BackgroundProcess(const BackgroundProcess&) = delete;
    BackgroundProcess& operator=(const BackgroundProcess&) = delete;

    // The output so far.
    std::string Output() const { return m_directory.Read("output"); }
    std::string Error() const { return m_directory.Read("error"); }

    // Sends an interruption: SIGINT, or Ctrl-C on its console.
    void Interrupt() const;

    // Posix only: send another signal; the process id.
    void Send(int signal) const;
    uint32_t Id() const;

    ProcessResult Wait();

private:
    struct State;

    TemporaryDirectory m_directory;
    std::unique_ptr<State> m_state;
};

// Waits until `isSo` returns true, at most two minutes, and returns the last result.
template <typename IsSo>
bool WaitUntil(IsSo isSo) {
    constexpr std::chrono::milliseconds pause(10);
    constexpr int looks = 12000;
    for (int i = 0; i < looks && !isSo(); ++i) {
        std::this_thread::sleep_for(pause);
    }
    return isSo();
}

} // namespace kit
