#include <csignal>
#include <stdexcept>
#include <vector>

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include "kit/system/process.h"

namespace kit {

namespace {

constexpr unsigned longestRun = 240; // seconds

std::vector<char*> Pointers(std::vector<std::string>& words) {
    std::vector<char*> pointers;
    for (std::string& word : words) {
        pointers.push_back(word.data());
    }
    pointers.push_back(nullptr);
    return pointers;
}

// Opens the standard input: a file, or a pipe whose other end is `staysOpen`.
int OpenInput(const ProcessSetup& setup, const TemporaryDirectory& files, int& staysOpen) {
    if (!setup.inputStaysOpen) {
        return open(files.Write("input", setup.input).c_str(), O_RDONLY | O_CLOEXEC);
    }
    int ends[2] = {-1, -1};
    if (pipe2(ends, O_CLOEXEC) != 0 ||
        write(ends[1], setup.input.data(), setup.input.size()) != static_cast<ssize_t>(setup.input.size())) {
        throw std::runtime_error("no pipe for the input of " + setup.program);
    }
    staysOpen = ends[1];
    return ends[0];
}

// Opens the standard output. `untaken` is the other end of a pipe that nobody reads.
int OpenOutput(const ProcessSetup& setup, const std::string& file, int& untaken) {
    int ends[2] = {-1, -1};
    switch (setup.output) {
    case StandardOutput::file:
        return open(file.c_str(), O_WRONLY | O_CLOEXEC);
    case StandardOutput::closed:
        return -1;
    case StandardOutput::readOnly:
        return open(file.c_str(), O_RDONLY | O_CLOEXEC);
    case StandardOutput::unreadPipe:
        if (pipe2(ends, O_CLOEXEC) == 0) {
            close(ends[0]);
        }
        return ends[1];
    case StandardOutput::fullPipe:
        if (pipe2(ends, O_CLOEXEC) == 0) {
            untaken = ends[0];
        }
        return ends[1];
    }
    return -1;
}

} // namespace

struct BackgroundProcess::State {
    pid_t process = -1;
    int inputStaysOpen = -1;
    int untakenOutput = -1;
};

BackgroundProcess::BackgroundProcess(const ProcessSetup& setup) : m_state(std::make_unique<State>()) {
    std::vector<std::string> words = setup.arguments;
    words.insert(words.begin(), setup.program);
    const std::vector<char*> pointers = Pointers(words);
    const int input = OpenInput(setup, m_directory, m_state->inputStaysOpen);
    const int output = OpenOutput(setup, m_directory.Write("output", ""), m_state->untakenOutput);
    const int error = open(m_directory.Write("error", "").c_str(), O_WRONLY | O_CLOEXEC);
    const pid_t test = getpid();
    m_state->process = fork();
    if (m_state->process == 0) {
        dup2(input, STDIN_FILENO);
        close(STDOUT_FILENO);
        dup2(output, STDOUT_FILENO); // of -1 fails and leaves the stream closed
        dup2(error, STDERR_FILENO);
        if (setup.directory.empty() || chdir(setup.directory.c_str()) == 0) {
            // Both survive execv. The child ends with the test, also when that is killed.
            prctl(PR_SET_PDEATHSIG, SIGKILL);
            alarm(longestRun);
            if (getppid() == test) { // the test may have ended before prctl
                execv(pointers[0], pointers.data());
            }
        }
        _exit(127);
    }
    for (const int descriptor : {input, output, error}) {
        close(descriptor);
    }
}

BackgroundProcess::~BackgroundProcess() {
    if (m_state->process > 0) {
        kill(m_state->process, SIGKILL);
        waitpid(m_state->process, nullptr, 0);
    }
    close(m_state->inputStaysOpen);
    close(m_state->untakenOutput);
}

void BackgroundProcess::Interrupt() const {
    Send(SIGINT);
}

void BackgroundProcess::Send(int signal) const {
    kill(m_state->process, signal);
}

uint32_t BackgroundProcess::Id() const {
    return static_cast<uint32_t>(m_state->process);
}

ProcessResult BackgroundProcess::Wait() {
    int status = 0;
    waitpid(m_state->process, &status, 0);
    m_state->process = -1;
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, Output(), Error()};
}

ProcessResult RunProcess(const ProcessSetup& setup) {
    return BackgroundProcess(setup).Wait();
}

bool IsRunning(uint32_t id) {
    return kill(static_cast<pid_t>(id), 0) == 0;
}

} // namespace kit
