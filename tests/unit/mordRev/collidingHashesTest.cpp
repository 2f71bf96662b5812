// Tables in which every short text has the same hash. The source of randomness gives zeros here, and so does the hash
// of a text of up to four bytes then: only the comparison of texts keeps them apart.
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

    // The id that the list gives for these ids under that key; "none" for none.
    std::string Match(const std::string& protocol, const std::vector<std::string_view>& mids) {
        const AllowQuery query(protocol, mids);
        const std::string* const match = list.Match(query);
        return match == nullptr ? "none" : *match;
    }

    AllowList list;
};

TEST_F(CollidingHashes, OfIdsUnderOneKeyAreToldApart) {
    list.Add("key", "B");
    list.Add("key", "A");
    EXPECT_EQ(Match("key", {"A"}), "A");
    EXPECT_EQ(Match("key", {"B"}), "B");
    EXPECT_EQ(Match("key", {"C"}), "none");
    EXPECT_EQ(Match("key", {"C", "B", "A"}), "A");
}

TEST_F(CollidingHashes, OfIdsUnderSeveralKeysAreToldApart) {
    list.Add("k1", "A");
    list.Add("k2", "B");
    EXPECT_EQ(Match("k1", {"A"}), "A");
    EXPECT_EQ(Match("k2", {"A"}), "none");
    EXPECT_EQ(Match("k1", {"B"}), "none");
    EXPECT_EQ(Match("k3", {"A", "B"}), "none");
    list.Add("k2", "A");
    EXPECT_EQ(Match("k2", {"B", "A"}), "A");
}

TEST_F(CollidingHashes, OfManyIdsAreToldApartAlsoInAListThatIsUsedAgain) {
    for (int round = 0; round < 3; ++round) {
        for (int number = round; number < 200; ++number) {
            list.Add("key", std::to_string(number));
        }
        for (int number = 0; number < 250; ++number) {
            const std::string mid = std::to_string(number);
            EXPECT_EQ(Match("key", {mid}), number >= round && number < 200 ? mid : "none") << round;
        }
        list.Clear();
        EXPECT_EQ(Match("key", {"100"}), "none");
    }
}

TEST_F(CollidingHashes, OfGuidsOfALongAnswerAreToldApart) {
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
