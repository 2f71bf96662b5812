// A child process of a test, of either width, that does what the test tells it (nativeChild.cpp).
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "platform/processApi.h"

// The program that child processes of that width run. It need not be there.
std::filesystem::path ChildProgram(int bits);

// The path of the program behind a process handle, as the system itself tells it.
std::string ProgramOf(platform::Handle process);

// ASCII letters alone.
std::string LowerCase(std::string text);

class ChildProcess {
public:
    // Starts a child of 32 or 64 bits and waits until it is ready. Throws std::runtime_error, with the reason, when
    // that cannot be done, such as when the child of the other width has not been built.
    explicit ChildProcess(int bits);

    // Ends the child, if it still runs.
    ~ChildProcess();
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    // Sends one command and gives the values of the answer. Throws std::runtime_error when the child could not do it.
    std::vector<std::string> Tell(const std::string& command);

    // Has the child end, and waits for that. Its id and this object's handle on it stay good.
    void End();

    uint32_t Id() const { return m_id; }
    platform::Handle Handle() const { return m_process; } // with all rights; closed by this object
    platform::Handle MainThread() const { return m_thread; }
    const std::filesystem::path& Program() const { return m_program; }

private:
    std::string ReadLine();
    void Close();

    std::filesystem::path m_program;
    platform::Handle m_process = nullptr;
    platform::Handle m_thread = nullptr;
    platform::Handle m_input = nullptr;  // this end of the child's standard input
    platform::Handle m_output = nullptr; // and of its output
    uint32_t m_id = 0;
};
