#include "zelkBase/logFile.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <ctime>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace siblings {

namespace {

// Blocks, during a write, the signals that a failing write raises on the thread: at the limit of file sizes, or on a
// pipe without a reader, the record is lost and the process goes on.
class BlockedWriteSignals {
public:
    BlockedWriteSignals() {
        sigemptyset(&m_signals);
        sigset_t pending;
        sigpending(&pending);
        for (const int signal : {SIGPIPE, SIGXFSZ}) {
            if (sigismember(&pending, signal) == 0) { // a signal that is already pending belongs to the process
                sigaddset(&m_signals, signal);
            }
        }
        pthread_sigmask(SIG_BLOCK, &m_signals, &m_former);
    }

    ~BlockedWriteSignals() { pthread_sigmask(SIG_SETMASK, &m_former, nullptr); }

    BlockedWriteSignals(const BlockedWriteSignals&) = delete;
    BlockedWriteSignals& operator=(const BlockedWriteSignals&) = delete;

    // Discards the signals that a failed write has raised.
    void Discard() {
        constexpr timespec now{};
        while (sigtimedwait(&m_signals, nullptr, &now) > 0) {
        }
    }

private:
    sigset_t m_signals;
    sigset_t m_former;
};

class LogFile final : public AppendStream {
public:
    explicit LogFile(int file) : m_file(file), m_isRegular(IsRegular(file)) {}
    ~LogFile() override { close(m_file); }
    LogFile(const LogFile&) = delete;
    LogFile& operator=(const LogFile&) = delete;

    size_t Append(std::string_view bytes) override {
        if (m_isRegular && !SizeIsLimited()) {
            return static_cast<size_t>(std::max(Write(bytes), ssize_t{0})); // raises no signal
        }
        BlockedWriteSignals signals;
        const ssize_t written = Write(bytes);
        if (written < 0) {
            signals.Discard();
            return 0;
        }
        return static_cast<size_t>(written);
    }

private:
    static bool IsRegular(int file) {
        struct stat status {};
        return fstat(file, &status) == 0 && S_ISREG(status.st_mode);
    }

    // Checked at each write, since the process can be limited at any time. The check is cheaper than blocking signals.
    // This is the older of two system calls, and takes less than half the time of the other.
    static bool SizeIsLimited() {
        unsigned long limits[2] = {}; // the current limit and its maximum
        return syscall(SYS_getrlimit, RLIMIT_FSIZE, limits) != 0 || limits[0] != unlimited;
    }

    // Where the call returns a smaller number for no limit, each write blocks signals.
    static constexpr unsigned long unlimited = ~0UL;

    ssize_t Write(std::string_view bytes) const {
        ssize_t written = -1;
        do {
            written = write(m_file, bytes.data(), bytes.size());
        } while (written < 0 && errno == EINTR);
        return written;
    }

    const int m_file;
    const bool m_isRegular;
};

} // namespace

std::unique_ptr<AppendStream> OpenLogFile(const WideString& path) {
    // Non-blocking: `path` can be a pipe, and no event may wait for its reader.
    const int file = open(ToUtf8(path).c_str(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC | O_NOCTTY | O_NONBLOCK,
                          S_IRUSR | S_IWUSR | S_IRGRP);
    if (file < 0) {
        return nullptr;
    }
    return std::make_unique<LogFile>(file);
}

} // namespace siblings
