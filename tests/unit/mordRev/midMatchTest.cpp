// Machine id matching: equality of whole strings.
#include "unit/mordRev/decisionFixture.h"

using namespace kit;

namespace {

class MidMatch : public DecisionFixture {
protected:
    bool Match(const std::string& key, const Lines& mids) {
        return receiver->IsMatchmid(key, Views(mids).views, &output);
    }

    // No match, with its record.
    void ExpectNoMatch(const std::string& key, const std::string& mid) {
        EXPECT_FALSE(Match(key, {mid})) << mid;
        EXPECT_EQ(TakeRecords(), NoMatchRecord()) << mid;
    }

    static Lines ErrorRecord(int listSize, int querySize) {
        return {inIsMatchmid.Error("CMordRecv::IsMatchmid failallow_list_size:" + std::to_string(listSize) +
                                   "query_mids_size:" + std::to_string(querySize))};
    }
    static Lines NoMatchRecord() { return {inIsMatchmid.Trace("CMordRecv::IsMatchmid fail end")}; }
    static Lines MatchRecord(const std::string& mid) {
        return {inIsMatchmid.Trace("CMordRecv::IsMatchmid success,mid_match_output matched" + mid)};
    }

    std::string output = "before";
};

TEST_F(MidMatch, NoIdsIsAnErrorWithTheNumberOfKeys) {
    Fields().SetAllowedMids({{"K1", {"A", "B", "C"}}, {"K2", {"A"}}});
    EXPECT_FALSE(Match("K1", {}));
    EXPECT_EQ(output, "before");
    EXPECT_EQ(TakeRecords(), ErrorRecord(2, 0));
}

TEST_F(MidMatch, AnEmptyAllowListIsAnErrorWithTheNumberOfIds) {
    EXPECT_FALSE(Match("K1", {"A", "B", "C"}));
    EXPECT_EQ(output, "before");
    EXPECT_EQ(TakeRecords(), ErrorRecord(0, 3));
}

TEST_F(MidMatch, BothEmptyIsAnError) {
    EXPECT_FALSE(Match("", {}));
    EXPECT_EQ(TakeRecords(), ErrorRecord(0, 0));
}

TEST_F(MidMatch, AnIdListedTwiceCountsOnceInTheErrorText) {
    EXPECT_FALSE(Match("K1", {"A", "A"}));
    EXPECT_EQ(TakeRecords(), ErrorRecord(0, 1));
}

TEST_F(MidMatch, AKeyThatTheListDoesNotHoldAllowsNobody) {
    Fields().SetAllowedMids({{"K1", {"A"}}});
    EXPECT_FALSE(Match("K2", {"A"}));
    EXPECT_EQ(output, "before");
    EXPECT_EQ(TakeRecords(), NoMatchRecord());
}

TEST_F(MidMatch, AKeyWithoutACommonIdIsNoMatch) {
    Fields().SetAllowedMids({{"K1", {"A", "C", "E"}}});
    EXPECT_FALSE(Match("K1", {"B", "D", "F"}));
    EXPECT_EQ(output, "before");
    EXPECT_EQ(TakeRecords(), NoMatchRecord());
}

TEST_F(MidMatch, TheIdUnderAnotherKeyAloneIsNoMatch) {
    Fields().SetAllowedMids({{"K1", {"B"}}, {"K2", {"A"}}});
    EXPECT_FALSE(Match("K1", {"A"}));
    EXPECT_EQ(output, "before");
    EXPECT_EQ(TakeRecords(), NoMatchRecord());
}

TEST_F(MidMatch, OneCommonIdIsAMatchAndReplacesTheWholeOutput) {
    Fields().SetAllowedMids({{"K1", {"A"}}});
    output = "a longer text that stood here before";
    EXPECT_TRUE(Match("K1", {"A"}));
    EXPECT_EQ(output, "A");
    EXPECT_EQ(TakeRecords(), MatchRecord("A"));
}

TEST_F(MidMatch, OfTwoCommonIdsTheLesserIsGivenAlsoWhenTheQueryDescends) {
    Fields().SetAllowedMids({{"K1", {"A", "B"}}});
    EXPECT_TRUE(Match("K1", {"B", "A"}));
    EXPECT_EQ(output, "A");
    EXPECT_EQ(TakeRecords(), MatchRecord("A"));
}

TEST_F(MidMatch, TheLeastCommonIdIsGivenNotTheLeastOfOneSide) {
    Fields().SetAllowedMids({{"K1", {"A", "C", "D"}}});
    EXPECT_TRUE(Match("K1", {"D", "C", "B"}));
    EXPECT_EQ(output, "C");
}

TEST_F(MidMatch, OfAnyNumberOfQueriedIdsEachIsLookedUp) {
    for (const size_t count : {1U, 2U, 127U, 128U, 129U, 1000U}) {
        Lines asked;
        for (size_t i = 0; i < count; ++i) {
            asked.push_back("MID-" + std::to_string(i));
        }
        for (const size_t listed : {size_t{0}, count / 2, count - 1}) {
            Fields().SetAllowedMids({{"K1", {"A", asked[listed], "Z"}}});
            output = "before";
            EXPECT_TRUE(Match("K1", asked)) << listed << " of " << count;
            EXPECT_EQ(output, asked[listed]) << count;
        }
        Fields().SetAllowedMids({{"K1", {"A", "MID-" + std::to_string(count)}}});
        EXPECT_FALSE(Match("K1", asked)) << count;
    }
}

TEST_F(MidMatch, IdsAreOrderedByUnsignedBytesAndThenByLength) {
    Fields().SetAllowedMids({{"K1", {"\x7F", "\x80", "\xFF"}}});
    EXPECT_TRUE(Match("K1", {"\xFF", "\x80"}));
    EXPECT_EQ(output, "\x80");
    EXPECT_TRUE(Match("K1", {"\xFF", "\x7F", "\x80"}));
    EXPECT_EQ(output, "\x7F");
    Fields().SetAllowedMids({{"K1", {"AB", "A", "ABC"}}});
    EXPECT_TRUE(Match("K1", {"ABC", "AB"}));
    EXPECT_EQ(output, "AB");
    Fields().SetAllowedMids({{"K1", {"B", "a"}}});
    EXPECT_TRUE(Match("K1", {"a", "B"}));
    EXPECT_EQ(output, "B");
}

TEST_F(MidMatch, IdsThatDifferInTheCaseOfALetterDoNotMatch) {
    Fields().SetAllowedMids({{"K1", {"MID-A"}}});
    ExpectNoMatch("K1", "mid-A");
    ExpectNoMatch("K1", "MID-a");
    ExpectNoMatch("k1", "MID-A");
    EXPECT_EQ(output, "before");
}

TEST_F(MidMatch, AnIdThatIsAPrefixOfAListedOneDoesNotMatch) {
    Fields().SetAllowedMids({{"K1", {"MID-10"}}});
    ExpectNoMatch("K1", "MID-1");
    ExpectNoMatch("K1", "MID-100");
    ExpectNoMatch("K1", "");
    EXPECT_EQ(output, "before");
}

TEST_F(MidMatch, NothingIsTrimmed) {
    Fields().SetAllowedMids({{"K1", {"MID-1"}}});
    EXPECT_FALSE(Match("K1", {" MID-1"}));
    EXPECT_FALSE(Match("K1", {"MID-1 "}));
    EXPECT_FALSE(Match("K1", {"MID-1\n"}));
    EXPECT_FALSE(Match(" K1", {"MID-1"}));
}

TEST_F(MidMatch, ThereAreNoWildcards) {
    Fields().SetAllowedMids({{"*", {"*"}}, {"K1", {"*", "MID-?", ".*", "%"}}});
    EXPECT_FALSE(Match("K1", {"MID-1"}));
    EXPECT_FALSE(Match("K2", {"MID-1"}));
}

TEST_F(MidMatch, TheEmptyIdAndTheEmptyKeyAreLikeAnyOther) {
    Fields().SetAllowedMids({{"", {""}}});
    EXPECT_TRUE(Match("", {"", "A"}));
    EXPECT_EQ(output, "");
    EXPECT_EQ(TakeRecords(), MatchRecord(""));
}

TEST_F(MidMatch, AnIdWithANulMatchesWholeAlone) {
    const std::string withNul("MID\0A", 5);
    Fields().SetAllowedMids({{"K1", {"MID"}}});
    EXPECT_FALSE(Match("K1", {withNul}));
    Fields().SetAllowedMids({{"K1", {withNul}}});
    EXPECT_TRUE(Match("K1", {withNul}));
    EXPECT_EQ(output, withNul);
}

TEST_F(MidMatch, TheOutputKeepsItsContentOnEveryFalseResult) {
    EXPECT_FALSE(Match("K1", {"A"}));
    Fields().SetAllowedMids({{"K1", {"A"}}});
    EXPECT_FALSE(Match("K1", {}));
    EXPECT_FALSE(Match("K2", {"A"}));
    EXPECT_FALSE(Match("K1", {"B"}));
    EXPECT_EQ(output, "before");
}

TEST_F(MidMatch, TheIdOfThisHostPlaysNoPart) {
    Fields().SetAllowedMids({{"K1", {"LOCAL-MID"}}});
    EXPECT_FALSE(Match("K1", {"A"}));
    EXPECT_TRUE(Match("K1", {"LOCAL-MID"}));
}

TEST_F(MidMatch, TheAllowListIsNotChanged) {
    const AllowTable list{{"K1", {"A", "B"}}, {"K2", {"C"}}};
    Fields().SetAllowedMids(list);
    Match("K1", {"A"});
    Match("K3", {"A"});
    EXPECT_EQ(Fields().AllowedMids(), list);
}

TEST_F(MidMatch, TheLockIsFreeAfterEachWay) {
    Match("K1", {"A"});
    Fields().SetAllowedMids({{"K1", {"A"}}});
    Match("K1", {"A"});
    Match("K1", {"B"});
    ASSERT_TRUE(Fields().Lock().try_lock());
    Fields().Lock().unlock();
}

} // namespace
