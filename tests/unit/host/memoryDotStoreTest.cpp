#include "dots/memoryDotStore.h"

#include <gtest/gtest.h>

#include "unit/host/temporaryDirectory.h"

using namespace mordhost;
using mordhostTest::TemporaryDirectory;

TEST(MemoryDotStore, FindsWhatItWasLoadedWith) {
    const MemoryDotStore store(DotTable{{"G1", {"M1", "M2"}}});
    ASSERT_NE(store.Find("G1"), nullptr);
    EXPECT_EQ(*store.Find("G1"), R"("G1":{"value":1,"mid":{"M1":1,"M2":1}})");
    EXPECT_EQ(store.Find("g1"), nullptr);
    EXPECT_EQ(store.Size(), 1U);
}

TEST(MemoryDotStore, ADeletedDotIsGoneAndCanBeDeletedOnce) {
    MemoryDotStore store(DotTable{{"G1", {"M1"}}, {"G2", {"M1"}}});
    EXPECT_TRUE(store.Delete("G1"));
    EXPECT_EQ(store.Find("G1"), nullptr);
    EXPECT_FALSE(store.Delete("G1"));
    EXPECT_EQ(store.Size(), 1U);
    EXPECT_EQ(store.Trouble(), "");
}

TEST(MemoryDotStore, WritesNoFileUnlessADotIsDeleted) {
    const TemporaryDirectory directory;
    MemoryDotStore store(DotTable{{"G1", {"M1"}}}, directory.Name("dots.json"));
    EXPECT_FALSE(store.Delete("other"));
    EXPECT_FALSE(directory.Has("dots.json"));
}

TEST(MemoryDotStore, TheFileHoldsWhatIsLeftAfterEachDeletion) {
    const TemporaryDirectory directory;
    MemoryDotStore store(DotTable{{"G1", {"M1"}}, {"G2", {"M2"}}}, directory.Name("dots.json"));
    store.Delete("G1");
    EXPECT_EQ(directory.Read("dots.json"), "{\n    \"G2\": [\"M2\"]\n}\n");
    store.Delete("G2");
    EXPECT_EQ(directory.Read("dots.json"), "{}\n");
}

TEST(MemoryDotStore, ADeletionThatCannotBeWrittenFailsAndTheDotDoesNotServeAgain) {
    const TemporaryDirectory directory;
    const std::string name = directory.Name("no/such/directory/dots.json");
    MemoryDotStore store(DotTable{{"G1", {"M1"}}}, name);
    EXPECT_FALSE(store.Delete("G1"));
    EXPECT_EQ(store.Find("G1"), nullptr);
    EXPECT_EQ(store.Trouble().rfind("cannot write " + name + ": ", 0), 0U) << store.Trouble();
}
