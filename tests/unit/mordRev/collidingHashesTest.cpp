// Tables in which every short text has the same hash: the scripted source of random keys returns zeros, and with such
// keys the hash of a text of up to four bytes is 0.
#include "kit/system/scriptedSystem.h"
#include "mordRev/src/allowList.h"
#include "mordRev/src/queryResultTable.h"
#include "mordRev/src/seededHash.h"

namespace {

class CollidingHashes : public kit::ScriptedSystemFixture {
protected:
    void SetUp() override {
        ScriptedSystemFixture::SetUp();
        system.randomStep = 0;
        const HashKeys& keys = ProcessHashKeys();
        ASSERT_EQ(HashText("A", keys.mid), HashText("B", keys.mid));
        ASSERT_EQ(HashText("key", keys.protocol), HashText("", keys.protocol));
        ASSERT_EQ(HashText("g1", keys.guid), HashText("g2", keys.guid));
    }

    void Refill(std::vector<AllowedPair> pairs) {
        list.Clear();
        list.Fill(pairs);
    }

    // The id that the list matches for these ids under that key, or "none".
    std::string Match(const std::string& protocol, const std::vector<std::string_view>& mids) {
        const AllowQuery query(protocol, mids);
        const std::string* const match = list.Match(query);
        return match == nullptr ? "none" : *match;
    }

    AllowList list;
};

TEST_F(CollidingHashes, DoNotConfuseIdsUnderOneKey) {
    Refill({{"key", "B"}, {"key", "A"}});
    EXPECT_EQ(Match("key", {"A"}), "A");
    EXPECT_EQ(Match("key", {"B"}), "B");
    EXPECT_EQ(Match("key", {"C"}), "none");
    EXPECT_EQ(Match("key", {"C", "B", "A"}), "A");
}

TEST_F(CollidingHashes, DoNotConfuseIdsUnderSeveralKeys) {
    Refill({{"k1", "A"}, {"k2", "B"}});
    EXPECT_EQ(Match("k1", {"A"}), "A");
    EXPECT_EQ(Match("k2", {"A"}), "none");
    EXPECT_EQ(Match("k1", {"B"}), "none");
    EXPECT_EQ(Match("k3", {"A", "B"}), "none");
    Refill({{"k1", "A"}, {"k2", "B"}, {"k2", "A"}});
    EXPECT_EQ(Match("k2", {"B", "A"}), "A");
}

TEST_F(CollidingHashes, DoNotConfuseManyIdsInARefilledList) {
    std::vector<std::string> texts;
    for (int number = 0; number < 250; ++number) {
        texts.push_back(std::to_string(number));
    }
    for (size_t round = 0; round < 3; ++round) {
        std::vector<AllowedPair> pairs;
        for (size_t number = round; number < 200; ++number) {
            pairs.emplace_back("key", texts[number]);
        }
        Refill(pairs);
        for (size_t number = 0; number < texts.size(); ++number) {
            const std::string& mid = texts[number];
            EXPECT_EQ(Match("key", {mid}), number >= round && number < 200 ? mid : "none") << round;
        }
        Refill({});
        EXPECT_EQ(Match("key", {"100"}), "none");
    }
}

TEST_F(CollidingHashes, DoNotConfuseTheGuidsOfALongAnswer) {
    std::vector<std::string> guids;
    for (int number = 0; number < 100; ++number) {
        guids.push_back("g" + std::to_string(number));
    }
    const std::string_view mid = "A";
    QueryResultTable table;
    for (size_t i = 0; i < guids.size(); ++i) {
        table.Insert(guids[i], MidSet(&mid, i % 2), nullptr);
    }
    for (size_t i = 0; i < guids.size(); ++i) {
        const MidSet* const found = table.Find(guids[i]);
        ASSERT_NE(found, nullptr) << guids[i];
        EXPECT_EQ(found->size(), i % 2) << guids[i];
    }
    EXPECT_EQ(table.Find("g100"), nullptr);
    EXPECT_EQ(table.Find(""), nullptr);
}

} // namespace
