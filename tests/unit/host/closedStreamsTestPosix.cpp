// Standard streams that are closed at the start of the process. Posix only.
#include <cerrno>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include "system/hostSystem.h"

namespace {

// Runs in a process without these streams. Returns 0, or the number of the first failed check.
int FaultWithout(const std::vector<int>& streams) {
    for (const int stream : streams) {
        close(stream);
    }
    mordhost::PrepareStreams();
    const int file = open("/dev/zero", O_RDWR | O_CLOEXEC);
    if (file <= STDERR_FILENO) {
        return 1; // a file reused the descriptor of a stream
    }
    for (const int stream : streams) {
        char byte = 0;
        errno = 0;
        const ssize_t done = stream == STDIN_FILENO ? read(stream, &byte, 1) : write(stream, &byte, 1);
        if (done != -1 || errno != EBADF) {
            return 2; // the use of the stream does not fail
        }
    }
    return 0;
}

// The same in a child process.
int FaultOf(const std::vector<int>& streams) {
    const pid_t process = fork();
    if (process == 0) {
        _exit(FaultWithout(streams));
    }
    int status = 0;
    waitpid(process, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

} // namespace

TEST(ClosedStreams, AreNotReusedForFilesAndFail) {
    EXPECT_EQ(FaultOf({STDIN_FILENO}), 0);
    EXPECT_EQ(FaultOf({STDOUT_FILENO}), 0);
    EXPECT_EQ(FaultOf({STDERR_FILENO}), 0);
    EXPECT_EQ(FaultOf({STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}), 0);
}
