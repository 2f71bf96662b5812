// Allocation failures in the steps of a decision and in the parser.
#include "kit/host/midSets.h"
#include "mordRev/src/json.h"
#include "unit/mordRev/exhaustedReceiver.h"
#include "unit/mordRev/spareBlocks.h"

namespace {

using namespace exhausted;

class ExhaustedMatch : public ExhaustedMemory {};

TEST_F(ExhaustedMatch, OfMatchingReleasesTheLockAndLeavesTheOutput) {
    receiver->SetAllowList(ListOf(longText + "2").c_str());
    const AllowTable list{{longText + "type", {longText + "2"}}};
    const auto asked = kit::Views({longText + "2", longText + "1"});
    std::string output = "before";
    Sweep([&] { receiver->IsMatchmid(longText + "type", asked.views, &output); }, [&] { output = "before"; },
          [&](const Failure& failure) {
              ExpectThrown(failure);
              EXPECT_EQ(output, "before");
              EXPECT_EQ(Fields().AllowedMids(), list);
              ExpectTheKnownEventDecided();
          });
}

TEST_F(ExhaustedMatch, OfParsingAnAnswerLeavesWholeEntriesAlone) {
    const std::string text = R"({")" + longText + R"(A":{"value":1,"mid":{")" + longText + R"(1":1,")" + longText +
                             R"(2":1}},")" + longText + R"(B":{"value":1,"mid":{")" + longText + R"(3":1}}})";
    QueryResultTable table;
    Sweep([&] { receiver->ParseQueryResult(text, &table); }, [&] { table = {}; },
          [&](const Failure& failure) {
              ExpectThrown(failure);
              EXPECT_LE(table.Size(), 1U);
              const MidSet* const entry = table.Find(longText + "A");
              EXPECT_EQ(entry != nullptr, table.Size() == 1);
              if (entry != nullptr) {
                  EXPECT_EQ(kit::TextsOf(*entry), (std::set{longText + "1", longText + "2"}));
              }
          });
}

TEST_F(ExhaustedMatch, OfParsingAnAnswerWithoutASpareBlockIsBadAllocToo) {
    const std::string text = R"({"A":{"value":1,"mid":{"1":1,"2":1}}})";
    HeldSpareBlocks none;
    QueryResultTable table;
    size_t blocks = 0;
    Sweep([&] { receiver->ParseQueryResult(text, &table); },
          [&] {
              table = {};
              none.TakeAgain();
          },
          [&](const Failure& failure) {
              ExpectThrown(failure);
              blocks += failure.kind == kit::AllocationKind::Malloc ? 1 : 0;
              EXPECT_EQ(table.Size(), 0U);
          });
    EXPECT_EQ(blocks, 2U); // once for each kind of sweep
}

// The lock too is used for the first time here, for which some systems allocate.
TEST_F(ExhaustedMatch, OfTheFirstOperationOfAReceiverIsBadAllocAndNothingElse) {
    const std::string document = kit::AllowText(longText + "mid", {longText + "type"});
    size_t nth = 1;
    for (; nth < 100; ++nth) {
        SCOPED_TRACE("allocation " + std::to_string(nth));
        CMordRecv fresh;
        std::string thrown = "nothing";
        kit::FailingAllocations failing(nth, false);
        try {
            fresh.SetAllowList(document.c_str());
        } catch (const std::bad_alloc&) {
            thrown = "std::bad_alloc";
        } catch (const std::exception& other) {
            thrown = other.what();
        }
        failing.Stop();
        if (failing.Failed() == kit::AllocationKind::None) {
            break;
        }
        EXPECT_EQ(thrown, "std::bad_alloc");
        EXPECT_TRUE(fresh.SetAllowList(document.c_str()));
    }
    EXPECT_GT(nth, 5U);
}

TEST_F(ExhaustedMatch, OfTheParserIsThrownAndTheOldBlockStays) {
    JsonAllocator allocator;
    const long held = kit::BlocksHeld();
    auto* const block = static_cast<char*>(allocator.Malloc(4));
    ASSERT_NE(block, nullptr);
    block[0] = 'x';
    {
        const kit::FailingAllocations failing(1, true);
        EXPECT_THROW(allocator.Malloc(4), std::bad_alloc);
        EXPECT_THROW(allocator.Realloc(block, 4, 400), std::bad_alloc);
        EXPECT_EQ(allocator.Malloc(0), nullptr);
    }
    EXPECT_EQ(block[0], 'x');
    auto* const moved = static_cast<char*>(allocator.Realloc(block, 4, 400));
    ASSERT_NE(moved, nullptr);
    EXPECT_EQ(moved[0], 'x');
    EXPECT_EQ(allocator.Realloc(moved, 400, 0), nullptr);
    JsonAllocator::Free(nullptr);
    EXPECT_EQ(kit::BlocksHeld(), held);
}

} // namespace
