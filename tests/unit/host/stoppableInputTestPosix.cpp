// A stop request ends the wait for input, also if the signal interrupts no call. Posix only.
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

// Waits for input that does not come, while another thread receives the signal. Returns whether the wait ended.
bool EndsByASignalElsewhere() {
    std::array<int, 2> ends{};
    if (pipe(ends.data()) != 0 || dup2(ends[0], STDIN_FILENO) != STDIN_FILENO) {
        return false;
    }
    HoldStopRequests();
    std::thread other([] {
        std::this_thread::sleep_for(std::chrono::milliseconds(200)); // the wait has probably begun
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

TEST(StoppableInputPosix, AWaitEndsAtASignalThatInterruptsNoCall) {
    // In a child process, because a stop request is permanent.
    const pid_t process = fork();
    if (process == 0) {
        alarm(20);
        _exit(EndsByASignalElsewhere() ? 0 : 1);
    }
    int status = 0;
    waitpid(process, &status, 0);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << status;
}
