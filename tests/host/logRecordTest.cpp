#include "decide/logRecord.h"

#include <ostream>
#include <string>

#include <gtest/gtest.h>

using namespace mordhost;

namespace mordhost {

void PrintTo(const LogRecord& record, std::ostream* out) {
    *out << record.level << '|' << record.function << '|' << record.message;
}

} // namespace mordhost

namespace {

constexpr std::string_view head = "2026-11-16 14:03:07 [TRACE][mordRev.cpp 637][CMordRecv::InitLogMoudle] [4312] ";

// The message of a record with this one.
std::string MessageOf(std::string_view message, std::string_view end = "\r\n") {
    const std::string text = std::string(head).append(message).append(end);
    const auto record = ParseLogRecord(text);
    return record ? std::string(record->message) : "no record";
}

} // namespace

TEST(LogRecord, IsTakenApart) {
    EXPECT_EQ(ParseLogRecord("2026-11-16 14:03:07 [TRACE][mordRev.cpp 637][CMordRecv::InitLogMoudle] [4312] "
                             "logger is ready\r\n"),
              (LogRecord{"TRACE", "CMordRecv::InitLogMoudle", "logger is ready"}));
    EXPECT_EQ(ParseLogRecord("2026-1-1 1:2:3 [ERROR][x 1][f] [1] m\r\n"), (LogRecord{"ERROR", "f", "m"}));
}

TEST(LogRecord, TheMessageIsAllThatStandsBehindTheHead) {
    EXPECT_EQ(MessageOf(""), "");
    EXPECT_EQ(MessageOf(" b"), " b") << "a blank at the front is part of the message";
    EXPECT_EQ(MessageOf("x [TRACE][y 1][z] [2] w"), "x [TRACE][y 1][z] [2] w");
}

TEST(LogRecord, AMessageMayHaveSeveralLines) {
    EXPECT_EQ(MessageOf("json={\n  1\n}"), "json={\n  1\n}");
    EXPECT_EQ(MessageOf("a\r\nb ] [ c"), "a\r\nb ] [ c");
    EXPECT_EQ(MessageOf("a\r\n"), "a\r\n") << "one line end is the record's";
    EXPECT_EQ(MessageOf("a\r\n" + std::string(head) + "b"), "a\r\n" + std::string(head) + "b")
        << "what looks like another record is text of this one";
}

TEST(LogRecord, OneWithoutItsLineEndCounts) {
    EXPECT_EQ(MessageOf("a", ""), "a");
}

TEST(LogRecord, OtherLevelsAndFormsAreNone) {
    for (const char* text :
         {"", "\r\n", "2026-11-16 14:03:07 [DEBUG][x 1][f] [1] m\r\n", "today [TRACE][x 1][f] [1] m\r\n",
          "2026-11-16 14:03:07 [TRACE][x 1][f] m\r\n", "2026-11-16 14:03:07 [TRACE]\r\n"}) {
        EXPECT_FALSE(ParseLogRecord(text)) << text;
    }
}
