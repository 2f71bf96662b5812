// The time field: always UTC+8.
#include "logging/logTimestamp.h"

#include <chrono>
#include <cstdio>
#include <random>

#include <gtest/gtest.h>

#include "kit/text/runSeed.h"
#include "kit/text/utf.h"
#include "unit/logging/timeZone.h"

namespace {

std::string Format(int64_t seconds) {
    return kit::ToNarrow(LogTime(seconds).View());
}

int64_t Now() {
    return std::chrono::duration_cast<std::chrono::seconds>(std::chrono::system_clock::now().time_since_epoch())
        .count();
}

// A reference calendar that counts years and months.
std::string CountedTimestamp(int64_t seconds) {
    seconds += 28800;
    int64_t days = seconds / 86400;
    const int rest = static_cast<int>(seconds % 86400);
    const auto isLeap = [](int year) { return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0; };
    int year = 1970;
    while (days >= (isLeap(year) ? 366 : 365)) {
        days -= isLeap(year) ? 366 : 365;
        ++year;
    }
    const int lengths[] = {31, isLeap(year) ? 29 : 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    int month = 0;
    while (days >= lengths[month]) {
        days -= lengths[month++];
    }
    char text[64];
    std::snprintf(text, sizeof text, "%d-%02d-%02d %02d:%02d:%02d", year, month + 1, static_cast<int>(days) + 1,
                  rest / 3600, rest / 60 % 60, rest % 60);
    return text;
}

TEST(LogTimestamp, IsEightHoursAheadOfUtc) {
    EXPECT_EQ(Format(1794871800), "2026-11-17 07:30:00"); // 2026-11-16 23:30 UTC
}

TEST(LogTimestamp, MonthDayHourMinuteAndSecondHaveTwoDigits) {
    EXPECT_EQ(Format(1767380645), "2026-01-03 03:04:05"); // 2026-01-02 19:04:05 UTC
    EXPECT_EQ(Format(1794808987), "2026-11-16 14:03:07"); // 2026-11-16 06:03:07 UTC
}

TEST(LogTimestamp, YearIsNotPadded) {
    EXPECT_EQ(Format(-30628368000), "999-06-05 08:00:00");
    EXPECT_EQ(Format(-61883136000), "9-01-01 08:00:00");
    EXPECT_EQ(Format(253402271999), "9999-12-31 23:59:59");
    EXPECT_EQ(Format(253402272000), "10000-01-01 00:00:00");
}

TEST(LogTimestamp, EpochIsEightOClock) {
    EXPECT_EQ(Format(0), "1970-01-01 08:00:00");
    EXPECT_EQ(Format(-1), "1970-01-01 07:59:59");
    EXPECT_EQ(Format(-28801), "1969-12-31 23:59:59");
}

TEST(LogTimestamp, YearEndsEightHoursBeforeUtc) {
    EXPECT_EQ(Format(1767196799), "2025-12-31 23:59:59");
    EXPECT_EQ(Format(1767196800), "2026-01-01 00:00:00");
}

TEST(LogTimestamp, LeapDaysAreGregorian) {
    EXPECT_EQ(Format(1709136000), "2024-02-29 00:00:00");
    EXPECT_EQ(Format(1709222400), "2024-03-01 00:00:00");
    EXPECT_EQ(Format(1677600000), "2023-03-01 00:00:00");
    EXPECT_EQ(Format(951753600), "2000-02-29 00:00:00");
    EXPECT_EQ(Format(4107513600), "2100-03-01 00:00:00");
}

TEST(LogTimestamp, SupportsTimesAbove32Bits) {
    EXPECT_EQ(Format(2147483648), "2038-01-19 11:14:08");
    EXPECT_EQ(Format(4294967296), "2106-02-07 14:28:16");
    EXPECT_EQ(Format(32535216000), "3001-01-01 08:00:00");
}

TEST(LogTimestamp, SupportsYearsAbove16Bits) {
    EXPECT_EQ(Format(971890934399), "32767-12-31 23:59:59");
    EXPECT_EQ(Format(971890934400), "32768-01-01 00:00:00");
    EXPECT_EQ(Format(67767976233503999), "2147483647-12-31 23:59:59");
}

TEST(LogTimestamp, MatchesACountedCalendar) {
    std::mt19937_64 random(kit::RunSeed());
    std::uniform_int_distribution<int64_t> times(0, 400'000'000'000); // to the year 14645
    for (int i = 0; i < 2000; ++i) {
        const int64_t time = times(random);
        ASSERT_EQ(Format(time), CountedTimestamp(time)) << time;
    }
}

TEST(LogTimestamp, IsTheCurrentTimeInEveryLocalTimeZone) {
    for (const char* const zone : {"UTC0", "EST5EDT", "XYZ-11"}) {
        SetTimeZone(zone);
        EXPECT_EQ(Format(1794871800), "2026-11-17 07:30:00") << zone;
        const int64_t before = Now();
        const std::string timestamp = kit::ToNarrow(LogTimestamp().View());
        EXPECT_GE(timestamp, CountedTimestamp(before)) << zone;
        EXPECT_LE(timestamp, CountedTimestamp(Now())) << zone;
    }
}

} // namespace
