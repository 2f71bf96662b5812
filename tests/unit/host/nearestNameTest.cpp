#include "arguments/nearestName.h"

#include <gtest/gtest.h>

using namespace mordhost;

TEST(EditDistance, CountsEachKindOfChange) {
    EXPECT_EQ(EditDistance("", ""), 0U);
    EXPECT_EQ(EditDistance("replay", "replay"), 0U);
    EXPECT_EQ(EditDistance("", "abc"), 3U);
    EXPECT_EQ(EditDistance("abc", ""), 3U);
    EXPECT_EQ(EditDistance("rplay", "replay"), 1U);
    EXPECT_EQ(EditDistance("reeplay", "replay"), 1U);
    EXPECT_EQ(EditDistance("raplay", "replay"), 1U);
    EXPECT_EQ(EditDistance("erplay", "replay"), 1U);
    EXPECT_EQ(EditDistance("kitten", "sitting"), 3U);
}

TEST(NearestName, IsTheOneWithTheFewestChanges) {
    EXPECT_EQ(NearestName("--dot", {"--dots-down", "--dots", "--log"}), "--dots");
    EXPECT_EQ(NearestName("repaly", {"record", "replay", "watch"}), "replay");
    EXPECT_EQ(NearestName("aa", {"ab", "ac"}), "ab");
}

TEST(NearestName, IsEmptyIfNoneIsClose) {
    EXPECT_EQ(NearestName("decide", {"record", "replay", "watch"}), "");
    EXPECT_EQ(NearestName("x", {}), "");
}
