// The table of an answer is a value, however its copies share.
#include "mordRev/src/queryResultTable.h"

#include <gtest/gtest.h>

#include "kit/host/midSets.h"

using namespace kit;

namespace {

using Texts = std::set<std::string>;

TEST(QueryResultTable, IsEmptyAtFirst) {
    const QueryResultTable table;
    EXPECT_EQ(table.Size(), 0U);
    EXPECT_EQ(table.Find(""), nullptr);
}

TEST(QueryResultTable, FindsWhatWasInserted) {
    QueryResultTable table;
    InsertMids(table, "a", {"1", "2"});
    InsertMids(table, "b", {});
    ASSERT_NE(table.Find("a"), nullptr);
    EXPECT_EQ(TextsOf(*table.Find("a")), Texts({"1", "2"}));
    ASSERT_NE(table.Find("b"), nullptr);
    EXPECT_TRUE(table.Find("b")->empty());
    EXPECT_EQ(table.Find("c"), nullptr);
    EXPECT_EQ(table.Size(), 2U);
}

TEST(QueryResultTable, KeepsTheFirstEntryOfAGuid) {
    QueryResultTable table;
    InsertMids(table, "a", {"1"});
    InsertMids(table, "a", {"2"});
    ASSERT_NE(table.Find("a"), nullptr);
    EXPECT_EQ(TextsOf(*table.Find("a")), Texts({"1"}));
    EXPECT_EQ(table.Size(), 1U);
}

TEST(QueryResultTable, ComparesGuidsWhole) {
    QueryResultTable table;
    InsertMids(table, std::string("a\0b", 3), {"1"});
    EXPECT_EQ(table.Find("a"), nullptr);
    EXPECT_EQ(table.Find("A"), nullptr);
    EXPECT_NE(table.Find(std::string("a\0b", 3)), nullptr);
}

// Long tables are kept in another way than short ones.
TEST(QueryResultTable, FindsEachEntryAndNoOtherAtEachSize) {
    constexpr int most = 40;
    const auto guidOf = [](int number) { return "guid " + std::to_string(number); };
    QueryResultTable table;
    for (int size = 0; size <= most; ++size) {
        SCOPED_TRACE(size);
        EXPECT_EQ(table.Size(), static_cast<size_t>(size));
        const QueryResultTable copy = table;
        for (int number = 0; number < most; ++number) {
            const MidSet* const found = table.Find(guidOf(number));
            ASSERT_EQ(found != nullptr, number < size) << number;
            if (found != nullptr) {
                EXPECT_EQ(TextsOf(*found), Texts({std::to_string(number)}));
                InsertMids(table, guidOf(number), {"another"});
                EXPECT_EQ(TextsOf(*table.Find(guidOf(number))), Texts({std::to_string(number)}));
            }
        }
        EXPECT_EQ(table.Find(""), nullptr);
        InsertMids(table, guidOf(size), {std::to_string(size)});
        EXPECT_EQ(copy.Size(), static_cast<size_t>(size));
        EXPECT_EQ(copy.Find(guidOf(size)), nullptr);
    }
}

TEST(QueryResultTable, ACopyDoesNotSeeWhatTheOriginalGetsAfterwards) {
    QueryResultTable table;
    InsertMids(table, "a", {"1"});
    const QueryResultTable copy = table;
    InsertMids(table, "b", {"2"});
    EXPECT_EQ(copy.Size(), 1U);
    EXPECT_EQ(copy.Find("b"), nullptr);
    EXPECT_EQ(table.Size(), 2U);
}

TEST(QueryResultTable, TheOriginalDoesNotSeeWhatACopyGets) {
    QueryResultTable table;
    InsertMids(table, "a", {"1"});
    QueryResultTable copy = table;
    InsertMids(copy, "b", {"2"});
    EXPECT_EQ(table.Size(), 1U);
    EXPECT_EQ(table.Find("b"), nullptr);
    ASSERT_NE(copy.Find("a"), nullptr);
    EXPECT_EQ(TextsOf(*copy.Find("a")), Texts({"1"}));
}

TEST(QueryResultTable, ACopyOfAnEmptyTableIsATableOfItsOwn) {
    QueryResultTable table;
    QueryResultTable copy = table;
    InsertMids(copy, "a", {"1"});
    EXPECT_EQ(table.Size(), 0U);
    InsertMids(table, "b", {"2"});
    EXPECT_EQ(copy.Find("b"), nullptr);
}

TEST(QueryResultTable, ACopyOutlivesTheOriginal) {
    QueryResultTable copy;
    {
        QueryResultTable table;
        InsertMids(table, "a", {"1"});
        copy = table;
    }
    ASSERT_NE(copy.Find("a"), nullptr);
    EXPECT_EQ(TextsOf(*copy.Find("a")), Texts({"1"}));
}

TEST(QueryResultTable, AnEntryOfACopyStaysGoodWhileTheOriginalChanges) {
    QueryResultTable table;
    InsertMids(table, "a", {"1"});
    const QueryResultTable copy = table;
    const MidSet* const entry = copy.Find("a");
    for (int i = 0; i < 1000; ++i) {
        InsertMids(table, std::to_string(i), {});
    }
    EXPECT_EQ(copy.Find("a"), entry);
    EXPECT_EQ(TextsOf(*entry), Texts({"1"}));
}

} // namespace
