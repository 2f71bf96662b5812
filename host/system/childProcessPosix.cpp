#include "system/childProcess.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <initializer_list>
#include <string>
#include <system_error>
#include <thread>

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include "system/descriptorPosix.h"
#include "system/filePath.h"
#include "system/runError.h"

namespace mordhost {

namespace {

[[noreturn]] void Refuse(const std::filesystem::path& file, int error) {
    throw RunError("cannot start the program " + Utf8Of(file) + ": " + std::generic_category().message(error));
}

int MakePipe(Descriptor& reading, Descriptor& writing) {
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) {
        return errno;
    }
    reading = Descriptor(ends[0]);
    writing = Descriptor(ends[1]);
    return 0;
}

// What the new process does before the program starts.
class SpawnPlan {
public:
    SpawnPlan() {
        posix_spawn_file_actions_init(&m_actions);
        posix_spawnattr_init(&m_attributes);
    }
    ~SpawnPlan() {
        posix_spawnattr_destroy(&m_attributes);
        posix_spawn_file_actions_destroy(&m_actions);
    }
    SpawnPlan(const SpawnPlan&) = delete;
    SpawnPlan& operator=(const SpawnPlan&) = delete;

    int Make(int input, int output) {
        // A separate process group receives no signals of the terminal: mordhost ends its programs itself.
        for (const int error : {posix_spawnattr_setpgroup(&m_attributes, 0),
                                posix_spawnattr_setflags(&m_attributes, POSIX_SPAWN_SETPGROUP),
                                posix_spawn_file_actions_adddup2(&m_actions, input, STDIN_FILENO),
                                posix_spawn_file_actions_adddup2(&m_actions, output, STDOUT_FILENO),
                                posix_spawn_file_actions_addopen(&m_actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0),
                                posix_spawn_file_actions_addclosefrom_np(&m_actions, STDERR_FILENO + 1)}) {
            if (error != 0) {
                return error;
            }
        }
        return 0;
    }

    int Start(pid_t& process, const std::filesystem::path& file, std::vector<std::string> arguments) {
        std::string name = file.native();
        std::vector<char*> all = {name.data()};
        for (std::string& argument : arguments) {
            all.push_back(argument.data());
        }
        all.push_back(nullptr);
        return posix_spawn(&process, name.c_str(), &m_actions, &m_attributes, all.data(), environ);
    }

private:
    posix_spawn_file_actions_t m_actions{};
    posix_spawnattr_t m_attributes{};
};

} // namespace

struct ChildProcess::State {
    pid_t process = -1;
    bool ended = false; // and its id released
    Descriptor input;
    Descriptor output;
};

ChildProcess::ChildProcess(const std::filesystem::path& file, const std::vector<std::string>& arguments)
    : m_state(std::make_unique<State>()) {
    Descriptor itsInput;
    Descriptor itsOutput;
    SpawnPlan plan;
    int error = MakePipe(itsInput, m_state->input);
    if (error == 0) {
        error = MakePipe(m_state->output, itsOutput);
    }
    if (error == 0) {
        error = plan.Make(itsInput.Get(), itsOutput.Get());
    }
    if (error == 0) {
        error = plan.Start(m_state->process, file, arguments);
    }
    if (error != 0) {
        Refuse(file, error);
    }
}

ChildProcess::~ChildProcess() {
    if (!m_state->ended) {
        kill(m_state->process, SIGKILL);
        while (waitpid(m_state->process, nullptr, 0) < 0 && errno == EINTR) {
        }
    }
}

uint32_t ChildProcess::Id() const {
    return static_cast<uint32_t>(m_state->process);
}

ChildProcess::Heard ChildProcess::Listen(std::chrono::milliseconds time) {
    pollfd waited = {m_state->output.Get(), POLLIN, 0};
    if (poll(&waited, 1, static_cast<int>(time.count())) <= 0) {
        return Heard::nothing;
    }
    char text[256];
    const ssize_t length = read(m_state->output.Get(), text, sizeof text);
    if (length == 0) {
        return Heard::end;
    }
    return length > 0 && std::find(text, text + length, '\n') != text + length ? Heard::line : Heard::nothing;
}

bool ChildProcess::Write(std::string_view text) {
    while (!text.empty()) {
        const ssize_t written = write(m_state->input.Get(), text.data(), text.size());
        if (written < 0 && errno != EINTR) {
            return false;
        }
        text.remove_prefix(written < 0 ? 0 : static_cast<size_t>(written));
    }
    return true;
}

bool ChildProcess::Read(char* data, size_t size) {
    while (size > 0) {
        const ssize_t length = read(m_state->output.Get(), data, size);
        if (length == 0 || (length < 0 && errno != EINTR)) {
            return false;
        }
        data += length < 0 ? 0 : length;
        size -= length < 0 ? 0 : static_cast<size_t>(length);
    }
    return true;
}

void ChildProcess::CloseInput() {
    m_state->input.Close();
}

bool ChildProcess::WaitForEnd(std::chrono::milliseconds time) {
    constexpr std::chrono::milliseconds pause(2);
    const auto last = std::chrono::steady_clock::now() + time;
    while (!m_state->ended) {
        m_state->ended = waitpid(m_state->process, nullptr, WNOHANG) == m_state->process;
        if (!m_state->ended && std::chrono::steady_clock::now() >= last) {
            return false;
        }
        if (!m_state->ended) {
            std::this_thread::sleep_for(pause);
        }
    }
    return true;
}

std::filesystem::path WithProgramEnding(const std::filesystem::path& file) {
    return file;
}

} // namespace mordhost
