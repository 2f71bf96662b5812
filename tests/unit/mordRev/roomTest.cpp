// What stands in the objects themselves: up to which size an event of the usual kind takes no memory from the heap, and
// how what grows then grows.
#include "kit/heap/countedHeap.h"
#include "kit/host/decisionSamples.h"
#include "kit/host/countingHost.h"
#include "kit/host/receiverFixture.h"
#include "mordRev/src/hashIndex.h"
#include "mordRev/src/json.h"
#include "mordRev/src/queryAnswer.h"
#include "mordRev/src/recordReader.h"

namespace {

// How many allocations `operation` makes.
template <typename Operation>
size_t CallsOf(const Operation& operation) {
    const kit::AllocationCounter counter;
    operation();
    return counter.Calls();
}

TEST(Room, OfATextOfARecordIs47BytesWithItsNul) {
    for (const size_t length : {1U, 20U, 46U}) {
        kit::FakeRecord record = kit::MakeFullRecord(std::string(length, 'x'), "");
        EXPECT_EQ(CallsOf([&] { RecordText(&record, "guid"); }), 0U) << length;
    }
    kit::FakeRecord record = kit::MakeFullRecord(std::string(47, 'x'), "");
    const kit::AllocationCounter counter;
    RecordText(&record, "guid");
    EXPECT_EQ(counter.Calls(), 1U);
    EXPECT_EQ(counter.Bytes(), 49U); // what it asked for, and a NUL of the reader's own
}

TEST(Room, OfAJsonTextIsAThousandBytes) {
    EXPECT_EQ(CallsOf([] {
                  JsonText text;
                  text.Out().StartObject();
                  text.Out().Text("guid");
                  text.Out().StartArray();
                  for (int i = 0; i < 9; ++i) {
                      text.Out().Text("a text that, with what comes before and behind it, is a hundred bytes "
                                      "long, or nearly so: ...");
                  }
                  text.Out().EndArray();
                  text.Out().EndObject();
                  EXPECT_GT(text.Size(), 950U);
              }),
              0U);
}

std::string AnswerOf(size_t rules, size_t mids) {
    std::string text = "{";
    for (size_t i = 0; i < rules; ++i) {
        text += (i == 0 ? "\"g" : ",\"g") + std::to_string(i) + R"(":{"value":1,"mid":{)";
        for (size_t j = 0; i == 0 && j < mids; ++j) {
            text += (j == 0 ? "\"m" : ",\"m") + std::to_string(j) + "\":1";
        }
        text += "}}";
    }
    return text + "}";
}

size_t CallsOfReading(size_t rules, size_t mids) {
    QueryAnswer answer(AnswerOf(rules, mids));
    return CallsOf([&] { EXPECT_TRUE(answer.Read()); });
}

TEST(Room, OfAnAnswerIsTakenOnceForEightRulesAndSixtyFourMachineIds) {
    const size_t usual = CallsOfReading(8, 64);
    EXPECT_EQ(CallsOfReading(1, 1), usual);
    EXPECT_EQ(CallsOfReading(9, 64), usual + 1);
    EXPECT_EQ(CallsOfReading(8, 65), usual + 1);
    EXPECT_LE(usual, 4U);
}

TEST(Room, OfATableIsTakenOnceForEightEntriesAndThenForAnIndex) {
    std::vector<std::string> guids;
    for (int i = 0; i < 10; ++i) {
        guids.push_back(std::to_string(i));
    }
    std::vector<size_t> calls;
    QueryResultTable table;
    for (const std::string& guid : guids) {
        calls.push_back(CallsOf([&] { table.Insert(guid, {}, nullptr); }));
    }
    // The entries and their list; then the list once more, and the index with room for eight and for more.
    EXPECT_EQ(calls, (std::vector<size_t>{2, 0, 0, 0, 0, 0, 0, 0, 5, 0}));
}

// Each growth takes two blocks.
TEST(Room, OfAnIndexIsDoubledWhenHalfOfItIsFull) {
    HashIndex index;
    std::vector<uint32_t> growths;
    for (uint32_t number = 0; number < 100; ++number) {
        const size_t calls = CallsOf([&] { index.Reserve(); });
        if (calls != 0) {
            EXPECT_EQ(calls, 2U);
            growths.push_back(number);
        }
        index.Add(MarkedHash(number * 0x9E3779B1), number);
    }
    EXPECT_EQ(growths, (std::vector<uint32_t>{0, 8, 16, 32, 64}));
}

class RoomOfAMatch : public kit::ReceiverFixture {};

TEST_F(RoomOfAMatch, IsThatOf128MachineIds) {
    MakeRunning();
    LogFileEnabled = false;
    Fields().SetAllowedMids({{"TYPE-1", {"OTHER"}}});
    const std::vector<std::string_view> mids(129, "MID-1");
    std::string match;
    const auto callsFor = [&](size_t count) {
        return CallsOf([&] { EXPECT_FALSE(receiver->IsMatchmid("TYPE-1", MidSet(mids).first(count), &match)); });
    };
    EXPECT_EQ(callsFor(1), 0U);
    EXPECT_EQ(callsFor(128), 0U);
    EXPECT_EQ(callsFor(129), 1U);
}

} // namespace
