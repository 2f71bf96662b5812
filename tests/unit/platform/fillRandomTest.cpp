// The system's source of randomness fills the whole requested range and nothing else.
#include <string>

#include <gtest/gtest.h>

#include "platform/platform.h"

namespace {

TEST(FillRandom, FillsEverySizeAndNothingBehindIt) {
    for (size_t size = 0; size <= 300; ++size) {
        std::string bytes(size + 8, 'x');
        ASSERT_TRUE(platform::FillRandom(bytes.data(), size));
        EXPECT_EQ(bytes.substr(size), "xxxxxxxx") << size;
    }
}

// A bit that is the same in a hundred fills by chance: once in 10^27 runs.
TEST(FillRandom, ChangesEveryBitFromFillToFill) {
    constexpr size_t size = 67; // no whole number of words
    std::string ones(size, '\0'), zeros(size, '\0');
    for (int fill = 0; fill < 100; ++fill) {
        std::string bytes(size, '\0');
        ASSERT_TRUE(platform::FillRandom(bytes.data(), size));
        for (size_t i = 0; i < size; ++i) {
            ones[i] = static_cast<char>(ones[i] | bytes[i]);
            zeros[i] = static_cast<char>(zeros[i] | ~bytes[i]);
        }
    }
    EXPECT_EQ(ones, std::string(size, '\xFF'));
    EXPECT_EQ(zeros, std::string(size, '\xFF'));
}

} // namespace
