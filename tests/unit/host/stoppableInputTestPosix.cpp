// A request to stop ends the wait for input, also when its signal comes where it interrupts nothing. Posix alone.
#include <array>
#include <chrono>
#include <csignal>
#include <thread>

#include <gtest/gtest.h>
#include <pthread.h>
#include <sys/wait.h>
#include <unistd.h>

#include "system/stopRequest.h"
#include "system/stoppableInput.h"

using namespace mordhost;

namespace {

// Waits for an input that does not come, while the signal comes to another thread. Returns whether the wait ended as it
// should.
bool EndsByASignalElsewhere() {
    std::array<int, 2> ends{};
    if (pipe(ends.data()) != 0 || dup2(ends[0], STDIN_FILENO) != STDIN_FILENO) {
        return false;
    }
    HoldStopRequests();
    std::thread other([] {
        std::this_thread::sleep_for(std::chrono::milliseconds(200)); // until the wait has begun, most likely
        pthread_kill(pthread_self(), SIGTERM);
    });
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGTERM);
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
    StoppableInput input;
    input.TakeStandardInput();
    std::array<char, 16> block{};
    std::error_code error;
    const size_t length = input.Read(block.data(), block.size(), error);
    other.join();
    return length == 0 && !error && StopRequested() && StopCause() == "SIGTERM";
}

} // namespace

TEST(StoppableInputPosix, TheWaitEndsAlsoWhenTheSignalInterruptsNothing) {
    // In a process of its own, since a request to stop holds for the rest of the process.
    const pid_t process = fork();
    if (process == 0) {
        alarm(20);
        _exit(EndsByASignalElsewhere() ? 0 : 1);
    }
    int status = 0;
    waitpid(process, &status, 0);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << status;
}
