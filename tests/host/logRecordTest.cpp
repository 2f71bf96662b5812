#include "decide/logRecord.h"

#include <ostream>

#include <gtest/gtest.h>

using namespace mordhost;

namespace mordhost {

void PrintTo(const LogRecord& record, std::ostream* out) {
    *out << record.level << '|' << record.function << '|' << record.message;
}

} // namespace mordhost

namespace {

using Records = std::vector<LogRecord>;

constexpr std::string_view head = "2026-11-16 14:03:07 [TRACE][mordRev.cpp 637][CMordRecv::InitLogMoudle] [4312] ";

std::string Record(std::string_view message) {
    return std::string(head) + std::string(message) + "\r\n";
}

} // namespace

TEST(LogRecord, IsTakenApart) {
    EXPECT_EQ(ParseLogRecords(Record("logger is ready")),
              (Records{{"TRACE", "CMordRecv::InitLogMoudle", "logger is ready"}}));
    EXPECT_EQ(ParseLogRecords("2026-1-1 1:2:3 [ERROR][x 1][f] [1] m\r\n"), (Records{{"ERROR", "f", "m"}}));
}

TEST(LogRecord, SeveralStandOneBehindTheOther) {
    const Records records = ParseLogRecords(Record("a") + Record("") + Record(" b"));
    ASSERT_EQ(records.size(), 3U);
    EXPECT_EQ(records[0].message, "a");
    EXPECT_EQ(records[1].message, "");
    EXPECT_EQ(records[2].message, " b") << "a blank at the front is part of the message";
}

TEST(LogRecord, AMessageMayHaveSeveralLines) {
    const Records records = ParseLogRecords(Record("json={\n  1\n}") + Record("a\r\nb ] [ c") + Record("d"));
    ASSERT_EQ(records.size(), 3U);
    EXPECT_EQ(records[0].message, "json={\n  1\n}");
    EXPECT_EQ(records[1].message, "a\r\nb ] [ c");
    EXPECT_EQ(records[2].message, "d");
}

TEST(LogRecord, AMessageMayLookLikeTheHeadOfARecord) {
    const Records records = ParseLogRecords(Record("x [TRACE][y 1][z] [2] w"));
    ASSERT_EQ(records.size(), 1U);
    EXPECT_EQ(records[0].message, "x [TRACE][y 1][z] [2] w");
}

TEST(LogRecord, WhatStandsBeforeTheFirstIsPassedOver) {
    const Records records = ParseLogRecords("rest of another\r\n" + Record("a"));
    ASSERT_EQ(records.size(), 1U);
    EXPECT_EQ(records[0].message, "a");
}

TEST(LogRecord, OneWithoutItsLineEndCounts) {
    EXPECT_EQ(ParseLogRecords(std::string(head) + "a").at(0).message, "a");
}

TEST(LogRecord, NoTextHoldsNone) {
    EXPECT_TRUE(ParseLogRecords("").empty());
    EXPECT_TRUE(ParseLogRecords("\r\n\r\n").empty());
}

TEST(LogRecord, OtherLevelsAndFormsAreNone) {
    for (const char* text : {"2026-11-16 14:03:07 [DEBUG][x 1][f] [1] m\r\n", "today [TRACE][x 1][f] [1] m\r\n",
                             "2026-11-16 14:03:07 [TRACE][x 1][f] m\r\n", "2026-11-16 14:03:07 [TRACE]\r\n"}) {
        EXPECT_TRUE(ParseLogRecords(text).empty()) << text;
    }
}
