#include "policy/memoryDotStore.h"

#include <gtest/gtest.h>

#include "unit/host/temporaryDirectory.h"

using namespace mordhost;
using kit::TemporaryDirectory;

namespace {

// The values of the dots of these guids, with "none" for a guid without a dot.
std::vector<std::string> ValuesOf(MemoryDotStore& store, const std::vector<std::string_view>& guids) {
    std::vector<const std::string*> dots = {nullptr}; // to be replaced
    EXPECT_EQ(store.Find(guids, dots), DotStore::Result::answered);
    std::vector<std::string> values;
    for (const std::string* const dot : dots) {
        values.push_back(dot == nullptr ? "none" : *dot);
    }
    return values;
}

using DotValues = std::vector<std::string>;

} // namespace

TEST(MemoryDotStore, FindsItsDotsInTheOrderOfTheGuids) {
    MemoryDotStore store(DotTable{{"G1", {"M1", "M2"}}, {"G2", {}}});
    EXPECT_EQ(ValuesOf(store, {"G2", "g1", "G1"}),
              (DotValues{R"({"value":1,"mid":{}})", "none", R"({"value":1,"mid":{"M1":1,"M2":1}})"}));
    EXPECT_EQ(ValuesOf(store, {}), DotValues());
    EXPECT_EQ(store.Size(), 2U);
}

TEST(MemoryDotStore, DeletesADotOnce) {
    MemoryDotStore store(DotTable{{"G1", {"M1"}}, {"G2", {"M1"}}});
    EXPECT_TRUE(store.Delete("G1"));
    EXPECT_EQ(ValuesOf(store, {"G1"}), DotValues{"none"});
    EXPECT_FALSE(store.Delete("G1"));
    EXPECT_EQ(store.Size(), 1U);
    EXPECT_EQ(store.Trouble(), "");
}

TEST(MemoryDotStore, WritesNoFileWithoutADeletion) {
    const TemporaryDirectory directory;
    MemoryDotStore store(DotTable{{"G1", {"M1"}}}, directory.Name("dots.json"));
    EXPECT_FALSE(store.Delete("other"));
    EXPECT_FALSE(directory.Has("dots.json"));
}

TEST(MemoryDotStore, WritesTheRemainingDotsAfterEachDeletion) {
    const TemporaryDirectory directory;
    MemoryDotStore store(DotTable{{"G1", {"M1"}}, {"G2", {"M2"}}}, directory.Name("dots.json"));
    store.Delete("G1");
    EXPECT_EQ(directory.Read("dots.json"), "{\n    \"G2\": [\"M2\"]\n}\n");
    store.Delete("G2");
    EXPECT_EQ(directory.Read("dots.json"), "{}\n");
}

TEST(MemoryDotStore, ADeletionThatCannotBeWrittenFailsAndRemovesTheDot) {
    const TemporaryDirectory directory;
    const std::string name = directory.Name("no/such/directory/dots.json");
    MemoryDotStore store(DotTable{{"G1", {"M1"}}}, name);
    EXPECT_FALSE(store.Delete("G1"));
    EXPECT_EQ(ValuesOf(store, {"G1"}), DotValues{"none"});
    EXPECT_EQ(store.Trouble().rfind("cannot write " + name + ": ", 0), 0U) << store.Trouble();
}
