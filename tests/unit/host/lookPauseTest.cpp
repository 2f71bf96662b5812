// The pause between looks. Linux only.
#include "live/lookPause.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include "system/descriptorPosix.h"

using namespace mordhost;
using std::chrono::milliseconds;

namespace {

// A pipe that is always ready for reading, as the socket for the ends of connections is on a busy machine.
class LookPause : public testing::Test {
protected:
    LookPause() {
        int ends[2] = {-1, -1};
        EXPECT_EQ(pipe(ends), 0);
        ready = Descriptor(ends[0]);
        writing = Descriptor(ends[1]);
        EXPECT_EQ(write(ends[1], "x", 1), 1);
    }

    Descriptor ready;
    Descriptor writing;
};

} // namespace

TEST_F(LookPause, LastsAlthoughConnectionsEndAllTheTime) {
    size_t collected = 0;
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_TRUE(PauseBeforeLook(milliseconds(50), ready.Get(), [&collected] { return ++collected > 0; }));
    EXPECT_GE(std::chrono::steady_clock::now() - begin, milliseconds(50));
    EXPECT_GT(collected, 0U);
}

TEST_F(LookPause, IgnoresAHandleFromWhichNothingCanBeRead) {
    size_t collected = 0;
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_TRUE(PauseBeforeLook(milliseconds(50), ready.Get(), [&collected] { return ++collected == 0; }));
    EXPECT_GE(std::chrono::steady_clock::now() - begin, milliseconds(50));
    EXPECT_EQ(collected, 1U);
}

TEST_F(LookPause, NeedsNoHandle) {
    EXPECT_TRUE(PauseBeforeLook(milliseconds(1), -1, [] { return false; }));
}

TEST_F(LookPause, IsLongerAfterALongLook) {
    EXPECT_EQ(PauseAfterLook(milliseconds(0)), milliseconds(20));
    EXPECT_EQ(PauseAfterLook(milliseconds(6)), milliseconds(20));
    EXPECT_EQ(PauseAfterLook(milliseconds(40)), milliseconds(120));
}
