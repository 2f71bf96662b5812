// Reading a record that keeps to the contract, and one that does not.
#include "mordRev/src/recordReader.h"

#include <limits>

#include <gtest/gtest.h>

#include "kit/host/fakeRecord.h"

namespace {

using kit::CallLog;
using kit::FakeRecord;
using kit::StringBehaviour;

constexpr int32_t largest = std::numeric_limits<int32_t>::max();

// The text under "guid", which the record holds as `text` and hands out by `behaviour`.
std::string Read(const std::string& text, const StringBehaviour& behaviour) {
    FakeRecord record;
    record.String("guid", text).Behave("guid", behaviour);
    return ReadString(&record, "guid");
}

// The calls that such a read makes.
std::vector<std::string> Calls(const StringBehaviour& behaviour) {
    CallLog calls;
    FakeRecord record("record", &calls);
    record.String("guid", "text").Behave("guid", behaviour);
    ReadString(&record, "guid");
    return calls.All();
}

// A record that keeps what GetString was given, and fills every byte of the buffer.
class FillingRecord : public IEventRecord {
public:
    int32_t GetInt32(const char*, int32_t*) override { return 1; }
    int32_t GetInt64(const char*, int64_t*) override { return 1; }
    int32_t GetString(const char* name, char* buffer, int32_t* size) override {
        EXPECT_STREQ(name, "guid");
        if (buffer == nullptr) {
            EXPECT_EQ(*size, 0);
            *size = length;
            return RECORD_BUFFER_NEEDED;
        }
        EXPECT_EQ(*size, length);
        for (int32_t i = 0; i < length; ++i) {
            EXPECT_EQ(buffer[i], '\0'); // a record that writes nothing must leave an empty text
            buffer[i] = 'x';
        }
        return RECORD_DELIVERED;
    }

    int32_t length = 0;
};

TEST(RecordReader, FirstCallHasANullBufferAndSize0SecondOneTheWholeBuffer) {
    FillingRecord record;
    for (const int32_t length : {1, 2, 15, 16, 17, 4096}) {
        record.length = length;
        EXPECT_EQ(ReadString(&record, "guid"), std::string(static_cast<size_t>(length), 'x'));
    }
}

TEST(RecordReader, TextIsEmptyBeforeAnythingWasRead) {
    EXPECT_EQ(RecordText().View(), "");
}

// Short texts and long ones stand in different places; what stood in either is gone when the text is read anew.
TEST(RecordReader, TextThatIsReadAnewIsThatOfTheLastRead) {
    FillingRecord record;
    RecordText text;
    for (const int32_t length : {1000, 1, 2000, 46, 47, 48, 49, 50, 48, 47, 3000, 48, 10}) {
        record.length = length;
        text.Read(&record, "guid");
        EXPECT_EQ(text.View(), std::string(static_cast<size_t>(length), 'x'));
        EXPECT_EQ(text.Text(), text.View());
        record.length = 0; // no size, and so no text
        text.Read(&record, "guid");
        EXPECT_EQ(text.View(), "");
        EXPECT_STREQ(text.Text(), "");
    }
}

// One byte more than it asked for, no NUL among them: the usual slip of a record that counts without the NUL.
TEST(RecordReader, ARecordThatWritesOneByteTooManyIsCut) {
    class Overrunning final : public FillingRecord {
    public:
        int32_t GetString(const char* name, char* buffer, int32_t* size) override {
            const int32_t result = FillingRecord::GetString(name, buffer, size);
            if (buffer != nullptr) {
                buffer[length] = 'x';
            }
            return result;
        }
    } record;
    for (const int32_t length : {1, 10, 47, 48, 49, 1000}) {
        record.length = length;
        EXPECT_EQ(ReadString(&record, "guid"), std::string(static_cast<size_t>(length), 'x'));
    }
}

TEST(RecordReader, TextIsAskedForTwiceAndOnceWhereItIsNotThere) {
    EXPECT_EQ(Calls({}), (std::vector<std::string>{"record.GetString.size(guid)", "record.GetString(guid)"}));
    EXPECT_EQ(Calls({.firstResult = 0}), std::vector<std::string>{"record.GetString.size(guid)"});
    EXPECT_EQ(Calls({.firstSize = 0}), std::vector<std::string>{"record.GetString.size(guid)"});
}

TEST(RecordReader, TextOfAMissingKeyIsEmpty) {
    FakeRecord record;
    EXPECT_EQ(ReadString(&record, "guid"), "");
}

TEST(RecordReader, FirstResultOtherThanBufferNeededGivesTheEmptyText) {
    for (const int32_t result : {0, 1, 2, 200, 202, -201, -1, largest}) {
        EXPECT_EQ(Read("text", {.firstResult = result}), "") << result;
    }
}

TEST(RecordReader, ASizeThatIsNotPositiveGivesTheEmptyText) {
    for (const int32_t size : {0, -1, -5, std::numeric_limits<int32_t>::min()}) {
        EXPECT_EQ(Read("text", {.firstSize = size}), "") << size;
    }
}

TEST(RecordReader, AnErrorOfTheSecondCallGivesTheEmptyTextAlsoWhereItWrote) {
    for (const int32_t result : {1, -1, 201, largest}) {
        EXPECT_EQ(Read("text", {.secondResult = result}), "") << result;
    }
}

TEST(RecordReader, ARecordThatWritesNothingGivesTheEmptyText) {
    EXPECT_EQ(Read("text", {.writes = false}), "");
    EXPECT_EQ(Read("text", {.firstSize = 100000, .writes = false}), "");
}

TEST(RecordReader, TextWithoutItsNulEndsWithTheBuffer) {
    EXPECT_EQ(Read("text", {.firstSize = 4, .writesNul = false}), "text");
    EXPECT_EQ(Read("text", {.firstSize = 3, .writesNul = false}), "tex");
    EXPECT_EQ(Read("text", {.firstSize = 1, .writesNul = false}), "t");
    EXPECT_EQ(Read("text", {.firstSize = 5, .writesNul = false}), "text");
}

TEST(RecordReader, TextEndsAtItsFirstNul) {
    EXPECT_EQ(Read(std::string("te\0xt", 5), {}), "te");
    EXPECT_EQ(Read(std::string("\0text", 5), {}), "");
}

TEST(RecordReader, ASizeBeyondTheTextDoesNotLengthenIt) {
    EXPECT_EQ(Read("text", {.firstSize = 6}), "text");
    EXPECT_EQ(Read("text", {.firstSize = 1000000}), "text");
    EXPECT_EQ(Read("text", {.firstSize = 1000000, .writesNul = false}), "text");
}

TEST(RecordReader, WhatTheSecondCallSaysOfTheSizePlaysNoPart) {
    for (const int32_t size : {0, 1, 3, 5, 6, 1000000, largest}) {
        EXPECT_EQ(Read("text", {.secondSize = size}), "text") << size;
        EXPECT_EQ(Read("text", {.writesNul = false, .secondSize = size}), "text") << size;
    }
}

// A block of that size cannot be had where pointers have 32 bits, which is no error but an absent value.
TEST(RecordReader, TheLargestSizeIsServedOrGivesTheEmptyText) {
    const bool canBeHad = sizeof(void*) > 4;
    EXPECT_EQ(Read("text", {.firstSize = largest}), canBeHad ? "text" : "");
    EXPECT_EQ(Read("text", {.firstSize = largest, .writesNul = false}), canBeHad ? "text" : "");
}

TEST(RecordReader, TextPassesByteForByte) {
    std::string text;
    for (int c = 1; c < 0x100; ++c) {
        text += static_cast<char>(c);
    }
    EXPECT_EQ(Read(text, {}), text);
}

TEST(RecordReader, Int32IsThatOfTheRecord) {
    FakeRecord record;
    record.Int32("pid", 4).Int32("least", std::numeric_limits<int32_t>::min()).Int32("minus", -1);
    EXPECT_EQ(ReadInt32(&record, "pid"), 4U);
    EXPECT_EQ(ReadInt32(&record, "least"), 0x80000000U);
    EXPECT_EQ(ReadInt32(&record, "minus"), 0xFFFFFFFFU);
}

TEST(RecordReader, Int32OfAMissingKeyIs0) {
    FakeRecord record;
    EXPECT_EQ(ReadInt32(&record, "pid"), 0U);
}

TEST(RecordReader, Int32ThatFailsIs0EvenIfItWroteSomething) {
    for (const int32_t result : {1, -1, 201, largest}) {
        FakeRecord record;
        record.FailingInt32("pid", 77, result);
        EXPECT_EQ(ReadInt32(&record, "pid"), 0U) << result;
    }
}

TEST(RecordReader, Int64IsThatOfTheRecord) {
    FakeRecord record;
    record.Int64("a", std::numeric_limits<int64_t>::max()).Int64("b", std::numeric_limits<int64_t>::min());
    EXPECT_EQ(ReadInt64(&record, "a"), std::numeric_limits<int64_t>::max());
    EXPECT_EQ(ReadInt64(&record, "b"), std::numeric_limits<int64_t>::min());
}

TEST(RecordReader, Int64OfAMissingKeyIs0) {
    FakeRecord record;
    EXPECT_EQ(ReadInt64(&record, "net_drv"), 0);
}

TEST(RecordReader, Int64IsWhatTheRecordLeftWhateverItsResult) {
    for (const int32_t result : {1, -1, 201}) {
        FakeRecord record;
        record.Int64WithResult("net_drv", -77, result);
        EXPECT_EQ(ReadInt64(&record, "net_drv"), -77) << result;
    }
}

} // namespace
