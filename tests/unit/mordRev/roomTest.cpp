// The capacity of the buffers within objects: up to which size an event needs no heap memory, and how the memory grows
// beyond it.
#include "kit/heap/countedHeap.h"
#include "kit/host/decisionSamples.h"
#include "kit/host/fakeRecord.h"
#include "kit/host/receiverFixture.h"
#include "mordRev/src/allowList.h"
#include "mordRev/src/hashIndex.h"
#include "mordRev/src/json.h"
#include "mordRev/src/queryAnswer.h"
#include "mordRev/src/recordReader.h"
#include "mordRev/src/spareBlocks.h"
#include "unit/mordRev/spareBlocks.h"

namespace {

// The number of allocations of `operation`.
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
    EXPECT_EQ(counter.Bytes(), 49U); // the size that the record requested, and a NUL of the reader
}

TEST(Room, OfAJsonTextIsAThousandBytes) {
    EXPECT_EQ(CallsOf([] {
                  JsonText text;
                  text.Out().StartObject();
                  text.Out().Text("guid");
                  text.Out().StartArray();
                  for (int i = 0; i < 9; ++i) {
                      text.Out().Text("a text that is, together with its quotes, comma, line feed and indentation, "
                                      "one hundred bytes");
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
    const std::string text = AnswerOf(rules, mids);
    return CallsOf([&] {
        const auto answer = std::allocate_shared<QueryAnswer>(BlockAllocator<QueryAnswer>());
        EXPECT_TRUE(answer->Read(text));
        EXPECT_EQ(answer->Rules().size(), rules);
    });
}

// An answer, with all its texts and lists, fits in one block, which is a spare one.
TEST(Room, OfAnAnswerIsABlock) {
    { const auto first = std::allocate_shared<QueryAnswer>(BlockAllocator<QueryAnswer>()); }
    EXPECT_EQ(CallsOfReading(1, 1), 0U);
    EXPECT_EQ(CallsOfReading(8, 64), 0U);
    EXPECT_EQ(CallsOfReading(64, 1024), 0U);
    const HeldSpareBlocks none;
    EXPECT_EQ(CallsOfReading(8, 64), 1U);
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

// Each growth allocates twice.
TEST(Room, OfAnIndexIsDoubledWhenHalfOfItIsFull) {
    HashIndex index;
    std::vector<uint32_t> growths;
    for (uint32_t number = 0; number < 100; ++number) {
        const size_t calls = CallsOf([&] { index.Reserve(); });
        if (calls != 0) {
            EXPECT_EQ(calls, 2U);
            growths.push_back(number);
        }
        index.Add(FilteredHash(number * 0x9E3779B1), number);
    }
    EXPECT_EQ(growths, (std::vector<uint32_t>{0, 8, 16, 32, 64}));
}

// The size of a vector's memory depends on the number of its elements alone.
TEST(Room, OfARepeatedPairIsThatOfOnePair) {
    const auto bytesOf = [](size_t count) {
        std::vector<AllowedPair> pairs(count, AllowedPair("KEY", "MID"));
        AllowList list;
        const kit::HeapUse heap;
        list.Fill(pairs);
        return heap.Bytes();
    };
    const long long ofOne = bytesOf(1);
    EXPECT_GT(ofOne, 0);
    EXPECT_EQ(bytesOf(2), ofOne);
    EXPECT_EQ(bytesOf(5000), ofOne);
}

TEST(Room, OfALargeAnswerIsAtMostThreeTimesItsText) {
    std::string text = "{";
    for (size_t rule = 0; rule < 1000; ++rule) {
        text += (rule == 0 ? "\"guid " : ",\"guid ") + std::to_string(rule) + R"(":{"value":1,"mid":{)";
        for (size_t mid = 0; mid < 100; ++mid) {
            text += (mid == 0 ? "\"" : ",\"") + std::string(32, 'm') + std::to_string(mid) + "\":1";
        }
        text += "}}";
    }
    text += "}";
    const HeldSpareBlocks none;
    const kit::HeapUse heap;
    const auto answer = std::allocate_shared<QueryAnswer>(BlockAllocator<QueryAnswer>());
    EXPECT_TRUE(answer->Read(text));
    EXPECT_GT(heap.Bytes(), 1000 * 100 * 32); // the texts of the machine ids
    EXPECT_GE(heap.MostBytes(), heap.Bytes());
    EXPECT_LE(heap.MostBytes(), 3 * static_cast<long long>(text.size()));
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
