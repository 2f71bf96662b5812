#include "decide/logRecord.h"

#include <string>

#include <gtest/gtest.h>

using namespace mordhost;

namespace {

constexpr std::string_view head = "2026-11-16 14:03:07 [TRACE][mordRev.cpp 637][CMordRecv::InitLogMoudle] [4312] ";

// The message that MessageOf finds in a record with this message.
std::string Found(std::string_view message, std::string_view end = "\r\n") {
    const std::string record = std::string(head).append(message).append(end);
    return std::string(MessageOf(record).value_or("no record"));
}

} // namespace

TEST(LogRecord, TheMessageIsTheTextAfterTheHead) {
    EXPECT_EQ(MessageOf("2026-11-16 14:03:07 [TRACE][mordRev.cpp 637][CMordRecv::InitLogMoudle] [4312] "
                        "logger is ready\r\n"),
              "logger is ready");
    EXPECT_EQ(MessageOf("2026-1-1 1:2:3 [ERROR][x 1][f] [1] m\r\n"), "m");
    EXPECT_EQ(Found(""), "");
    EXPECT_EQ(Found(" b"), " b") << "a blank at the front is part of the message";
    EXPECT_EQ(Found("x [TRACE][y 1][z] [2] w"), "x [TRACE][y 1][z] [2] w");
}

TEST(LogRecord, AMessageMayHaveSeveralLines) {
    EXPECT_EQ(Found("json={\n  1\n}"), "json={\n  1\n}");
    EXPECT_EQ(Found("a\r\nb ] [ c"), "a\r\nb ] [ c");
    EXPECT_EQ(Found("a\r\n"), "a\r\n") << "one line end is the record's";
    EXPECT_EQ(Found("a\r\n" + std::string(head) + "b"), "a\r\n" + std::string(head) + "b")
        << "what looks like another record is text of this one";
}

TEST(LogRecord, TheLineEndIsOptional) {
    EXPECT_EQ(Found("a", ""), "a");
}

TEST(LogRecord, ATextWithoutAThreadIsNotARecord) {
    for (const char* text : {"", "\r\n", "] [", "today\r\n", "2026-11-16 14:03:07 [TRACE][x 1][f] m\r\n",
                             "2026-11-16 14:03:07 [TRACE]\r\n", "2026-11-16 14:03:07 [TRACE][x 1][f] [1]"}) {
        EXPECT_FALSE(MessageOf(text)) << text;
    }
}
