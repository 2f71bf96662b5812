// The id of a thread, also in a forked process.
#include <atomic>
#include <thread>

#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "platform/platform.h"

namespace {

bool IsTheSystems() {
    return platform::GetCurrentThreadId() == static_cast<uint32_t>(gettid());
}

TEST(ThreadId, IsThatOfTheSystemInEachThread) {
    EXPECT_TRUE(IsTheSystems());
    EXPECT_TRUE(IsTheSystems()); // from the cache
    std::atomic<bool> inOther = false;
    std::thread([&inOther] { inOther = IsTheSystems() && IsTheSystems(); }).join();
    EXPECT_TRUE(inOther);
}

TEST(ThreadId, IsAnotherOneInAForkedProcess) {
    ASSERT_TRUE(IsTheSystems());
    const pid_t child = fork();
    if (child == 0) {
        _exit(IsTheSystems() ? 0 : 1);
    }
    ASSERT_GT(child, 0);
    int status = -1;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
    EXPECT_TRUE(IsTheSystems());
}

} // namespace
