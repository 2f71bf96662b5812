#include <csignal>
#include <vector>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include "host/process.h"

namespace mordhostTest {

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

int Start(const ProcessSetup& setup, const TemporaryDirectory& files) {
    std::vector<std::string> words = setup.arguments;
    words.insert(words.begin(), setup.program);
    const std::vector<char*> pointers = Pointers(words);
    const std::string input = files.Write("input", setup.input);
    const std::string output = files.Write("output", "");
    const std::string error = files.Write("error", "");
    const pid_t process = fork();
    if (process == 0) {
        dup2(open(input.c_str(), O_RDONLY), STDIN_FILENO);
        dup2(open(output.c_str(), O_WRONLY), STDOUT_FILENO);
        dup2(open(error.c_str(), O_WRONLY), STDERR_FILENO);
        if (setup.directory.empty() || chdir(setup.directory.c_str()) == 0) {
            alarm(longestRun); // outlives the call below
            execv(pointers[0], pointers.data());
        }
        _exit(127);
    }
    return process;
}

} // namespace

BackgroundProcess::BackgroundProcess(const ProcessSetup& setup) : m_process(Start(setup, m_directory)) {}

BackgroundProcess::~BackgroundProcess() {
    if (m_process > 0) {
        kill(m_process, SIGKILL);
        waitpid(m_process, nullptr, 0);
    }
}

void BackgroundProcess::Interrupt() const {
    kill(m_process, SIGINT);
}

ProcessResult BackgroundProcess::Wait() {
    int status = 0;
    waitpid(m_process, &status, 0);
    m_process = -1;
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, m_directory.Read("output"), m_directory.Read("error")};
}

ProcessResult RunProcess(const ProcessSetup& setup) {
    return BackgroundProcess(setup).Wait();
}

bool IsRunning(uint32_t id) {
    return kill(static_cast<pid_t>(id), 0) == 0;
}

} // namespace mordhostTest
