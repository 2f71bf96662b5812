// The table of an answer is a value, however its copies share.
#include "mordRev/src/queryResultTable.h"

#include <gtest/gtest.h>

namespace {

TEST(QueryResultTable, IsEmptyAtFirst) {
    const QueryResultTable table;
    EXPECT_EQ(table.Size(), 0U);
    EXPECT_EQ(table.Find(""), nullptr);
}

TEST(QueryResultTable, FindsWhatWasInserted) {
    QueryResultTable table;
    table.Insert("a", {"1", "2"});
    table.Insert("b", {});
    ASSERT_NE(table.Find("a"), nullptr);
    EXPECT_EQ(*table.Find("a"), (MidSet{"1", "2"}));
    ASSERT_NE(table.Find("b"), nullptr);
    EXPECT_TRUE(table.Find("b")->empty());
    EXPECT_EQ(table.Find("c"), nullptr);
    EXPECT_EQ(table.Size(), 2U);
}

TEST(QueryResultTable, KeepsTheFirstEntryOfAGuid) {
    QueryResultTable table;
    table.Insert("a", {"1"});
    table.Insert("a", {"2"});
    ASSERT_NE(table.Find("a"), nullptr);
    EXPECT_EQ(*table.Find("a"), MidSet{"1"});
    EXPECT_EQ(table.Size(), 1U);
}

TEST(QueryResultTable, ComparesGuidsWhole) {
    QueryResultTable table;
    table.Insert(std::string("a\0b", 3), {"1"});
    EXPECT_EQ(table.Find("a"), nullptr);
    EXPECT_EQ(table.Find("A"), nullptr);
    EXPECT_NE(table.Find(std::string("a\0b", 3)), nullptr);
}

TEST(QueryResultTable, ACopyDoesNotSeeWhatTheOriginalGetsAfterwards) {
    QueryResultTable table;
    table.Insert("a", {"1"});
    const QueryResultTable copy = table;
    table.Insert("b", {"2"});
    EXPECT_EQ(copy.Size(), 1U);
    EXPECT_EQ(copy.Find("b"), nullptr);
    EXPECT_EQ(table.Size(), 2U);
}

TEST(QueryResultTable, TheOriginalDoesNotSeeWhatACopyGets) {
    QueryResultTable table;
    table.Insert("a", {"1"});
    QueryResultTable copy = table;
    copy.Insert("b", {"2"});
    EXPECT_EQ(table.Size(), 1U);
    EXPECT_EQ(table.Find("b"), nullptr);
    ASSERT_NE(copy.Find("a"), nullptr);
    EXPECT_EQ(*copy.Find("a"), MidSet{"1"});
}

TEST(QueryResultTable, ACopyOfAnEmptyTableIsATableOfItsOwn) {
    QueryResultTable table;
    QueryResultTable copy = table;
    copy.Insert("a", {"1"});
    EXPECT_EQ(table.Size(), 0U);
    table.Insert("b", {"2"});
    EXPECT_EQ(copy.Find("b"), nullptr);
}

TEST(QueryResultTable, ACopyOutlivesTheOriginal) {
    QueryResultTable copy;
    {
        QueryResultTable table;
        table.Insert("a", {"1"});
        copy = table;
    }
    ASSERT_NE(copy.Find("a"), nullptr);
    EXPECT_EQ(*copy.Find("a"), MidSet{"1"});
}

TEST(QueryResultTable, AnEntryOfACopyStaysGoodWhileTheOriginalChanges) {
    QueryResultTable table;
    table.Insert("a", {"1"});
    const QueryResultTable copy = table;
    const MidSet* const entry = copy.Find("a");
    for (int i = 0; i < 1000; ++i) {
        table.Insert(std::to_string(i), {});
    }
    EXPECT_EQ(copy.Find("a"), entry);
    EXPECT_EQ(*entry, MidSet{"1"});
}

} // namespace
