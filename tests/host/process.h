// Programs that a test runs.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "host/temporaryDirectory.h"

namespace mordhostTest {

struct ProcessResult {
    int code = -1; // exit code; -1 for a process that did not end by itself
    std::string output;
    std::string error;
};

struct ProcessSetup {
    std::string program; // UTF-8, as all texts here
    std::vector<std::string> arguments;
    std::string input;     // what it reads from its standard input
    std::string directory; // in which it runs; empty: that of the test
};

// Runs the program to its end. None outlives its test for long: after four minutes it is ended.
ProcessResult RunProcess(const ProcessSetup& setup);

// Whether the process with this id is there and has not ended.
bool IsRunning(uint32_t id);

// A process with files for its standard streams that runs while the test goes on. Posix alone.
class BackgroundProcess {
public:
    explicit BackgroundProcess(const ProcessSetup& setup);
    ~BackgroundProcess();
    BackgroundProcess(const BackgroundProcess&) = delete;
    BackgroundProcess& operator=(const BackgroundProcess&) = delete;

    // What it has written to its standard error so far.
    std::string Error() const { return m_directory.Read("error"); }

    // Sends it an interruption, as the user would.
    void Interrupt() const;

    ProcessResult Wait();

private:
    TemporaryDirectory m_directory;
    int m_process = -1;
};

} // namespace mordhostTest
