#include "policy/timestamp.h"

#include <gtest/gtest.h>

using namespace mordhost;

TEST(Timestamp, IsUtcToTheMillisecond) {
    using namespace std::chrono;
    const UtcTime time = sys_days(year(2025) / 11 / 20) + hours(9) + minutes(5) + seconds(2) + milliseconds(45);
    EXPECT_EQ(Timestamp(time), "2025-11-20T09:05:02.045Z");
    EXPECT_EQ(Timestamp(sys_days(year(1969) / 12 / 31) + hours(23)), "1969-12-31T23:00:00.000Z");
}

TEST(Timestamp, WhatItWritesItAccepts) {
    EXPECT_TRUE(IsTimestamp(Timestamp(UtcNow())));
}

TEST(Timestamp, EveryYearHasItsOrder) {
    for (const char* text : {"0000-01-01T00:00:00.000Z", "1600-02-29T23:59:59.999Z", "2263-01-01T00:00:00.000Z",
                             "9999-12-31T23:59:59.999Z"}) {
        EXPECT_EQ(Timestamp(*ParseTimestamp(text)), text);
    }
    EXPECT_LT(UtcNow(), *ParseTimestamp("9999-01-01T00:00:00Z"));
    EXPECT_GT(UtcNow(), *ParseTimestamp("0001-01-01T00:00:00Z"));
}

TEST(Timestamp, TheFractionIsOptionalAndOfAnyLength) {
    EXPECT_TRUE(IsTimestamp("2025-11-20T09:54:12Z"));
    EXPECT_TRUE(IsTimestamp("2025-11-20T09:54:12.3Z"));
    EXPECT_TRUE(IsTimestamp("2025-11-20T09:54:12.345678901Z"));
}

TEST(Timestamp, InvalidDaysAndHoursAreRefused) {
    EXPECT_TRUE(IsTimestamp("2024-02-29T00:00:00Z"));
    EXPECT_TRUE(IsTimestamp("2016-12-31T23:59:60Z")) << "a leap second";
    for (const char* text :
         {"2025-02-29T00:00:00Z", "2025-13-01T00:00:00Z", "2025-00-01T00:00:00Z", "2025-01-32T00:00:00Z",
          "2025-01-01T24:00:00Z", "2025-01-01T00:60:00Z", "2025-01-01T00:00:61Z"}) {
        EXPECT_FALSE(IsTimestamp(text)) << text;
    }
}

TEST(Timestamp, OtherFormsAreRefused) {
    for (const char* text : {"", "Z", "2025-11-20", "2025-11-20T09:54:12", "2025-11-20 09:54:12Z",
                             "2025-11-20T09:54:12.Z", "2025-11-20T09:54:12+00:00", "2025-11-20T9:54:12Z",
                             "2025-11-20T09:54:12.3xZ", "2025-11-20T09:54:12,3Z", "2025-11-20T09:54:12.345ZZ"}) {
        EXPECT_FALSE(IsTimestamp(text)) << text;
    }
}

TEST(TimeOfDay, HasTheSameWidthForEveryTime) {
    EXPECT_EQ(TimeOfDay("2025-11-20T09:54:12.345Z"), "09:54:12.345");
    EXPECT_EQ(TimeOfDay("2025-11-20T09:54:12Z"), "09:54:12.000");
    EXPECT_EQ(TimeOfDay("2025-11-20T09:54:12.3Z"), "09:54:12.300");
    EXPECT_EQ(TimeOfDay("2025-11-20T09:54:12.3456Z"), "09:54:12.345");
}

TEST(TimeOfDay, OfNoTimeIsADash) {
    EXPECT_EQ(TimeOfDay(""), "-");
}
