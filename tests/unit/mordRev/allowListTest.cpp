// The allow list: what a document makes of it, and what survives a bad one.
#include "unit/mordRev/decisionFixture.h"

using namespace kit;

namespace {

const AllowTable oldList{{"OLD-KEY", {"OLD-MID"}}};

class AllowListDocument : public DecisionFixture {
protected:
    void SetUp() override {
        DecisionFixture::SetUp();
        Fields().SetAllowedMids(oldList);
    }

    bool Set(const std::string& text) { return receiver->SetAllowList(text.c_str()); }
    const AllowTable& List() { return Fields().AllowedMids(); }

    static Lines Accepted() { return {inSetAllowList.Trace("parse allow list, ret1")}; }
    static Lines Refused(const std::string& error) {
        return {inSetAllowList.Error(error), inSetAllowList.Trace("parse allow list, ret0")};
    }
    static Lines ParseError(int code, int offset) {
        return Refused("error_code" + std::to_string(code) + "error_offset" + std::to_string(offset));
    }
};

TEST_F(AllowListDocument, IsOrganisedByMachineAndTheTableByProtocol) {
    EXPECT_TRUE(
        Set(R"({"mid_list":[{"mid":"MID-1","protocol":["KEY-1","KEY-2"]},{"mid":"MID-2","protocol":["KEY-2"]}]})"));
    EXPECT_EQ(List(), (AllowTable{{"KEY-1", {"MID-1"}}, {"KEY-2", {"MID-1", "MID-2"}}}));
    EXPECT_EQ(TakeRecords(), Accepted());
}

TEST_F(AllowListDocument, EmptyTextIsRefusedAndTheListStays) {
    EXPECT_FALSE(Set(""));
    EXPECT_EQ(List(), oldList);
    EXPECT_EQ(TakeRecords(), ParseError(1, 0));
}

TEST_F(AllowListDocument, NullTextIsRefusedLikeAnEmptyOneAndThrowsNothing) {
    EXPECT_FALSE(receiver->SetAllowList(nullptr));
    EXPECT_EQ(List(), oldList);
    EXPECT_EQ(TakeRecords(), ParseError(1, 0));
}

TEST_F(AllowListDocument, BlanksAloneAreRefusedAndTheListStays) {
    EXPECT_FALSE(Set(" \t\r\n"));
    EXPECT_EQ(List(), oldList);
    EXPECT_EQ(TakeRecords(), ParseError(1, 4));
}

TEST_F(AllowListDocument, MalformedJsonIsRefusedAndTheListStays) {
    const struct {
        const char* text;
        int code;
        int offset;
    } rows[] = {
        {R"({"mid_list":[})", 3, 13},
        {R"({"mid_list":[1,]})", 3, 15},
        {R"({"mid_list" 1})", 5, 12},
        {R"({"mid_list":1)", 6, 13},
        {R"({mid_list:[]})", 4, 1},
        {R"({"mid_list":[1 2]})", 7, 15},
        {R"({"mid_list":"a)", 11, 14},
        {R"({"a":"\x"})", 10, 6},
        {R"({"a":"\u12G4"})", 8, 6},
        {R"({"a":"\uD800"})", 9, 6},
        {R"({"a":1e400})", 13, 5},
        {R"({"a":1.})", 14, 7},
        {R"({"a":1e})", 15, 7},
        {"]", 3, 0},
        {"}", 3, 0},
        {",", 3, 0},
        {"nul", 3, 3},
        {"{'mid_list':[]}", 4, 1},
        {"/* */{\"mid_list\":[]}", 3, 0},
        {"NaN", 3, 0},
    };
    for (const auto& row : rows) {
        EXPECT_FALSE(Set(row.text)) << row.text;
        EXPECT_EQ(List(), oldList) << row.text;
        EXPECT_EQ(TakeRecords(), ParseError(row.code, row.offset)) << row.text;
    }
}

TEST_F(AllowListDocument, TextBehindTheRootIsRefusedAndTheListStays) {
    EXPECT_FALSE(Set(R"({"mid_list":[]} x)"));
    EXPECT_EQ(List(), oldList);
    EXPECT_EQ(TakeRecords(), ParseError(2, 16));
    EXPECT_FALSE(Set(R"({"mid_list":[]}{})"));
    EXPECT_EQ(TakeRecords(), ParseError(2, 15));
}

TEST_F(AllowListDocument, BlanksMayStandAroundTheRoot) {
    EXPECT_TRUE(Set(" \t\r\n" + AllowText("MID-1", {"KEY-1"}) + " \t\r\n"));
    EXPECT_EQ(List(), (AllowTable{{"KEY-1", {"MID-1"}}}));
}

TEST_F(AllowListDocument, WithoutMidListIsRefusedAndTheListStays) {
    for (const char* const text : {"{}", R"({"Mid_list":[]})", R"({"mid_lis":[],"mid_listx":[]})",
                                   R"({"other":{"mid_list":[]}})", R"({"mid_list\u0000":[]})"}) {
        EXPECT_FALSE(Set(text)) << text;
        EXPECT_EQ(List(), oldList);
        EXPECT_EQ(TakeRecords(), Refused("format error"));
    }
}

TEST_F(AllowListDocument, MidListThatIsTheNumber1EmptiesTheListAndSaysMidListIsEmpty) {
    EXPECT_TRUE(Set(R"({"mid_list":1})"));
    EXPECT_EQ(List(), AllowTable{});
    EXPECT_EQ(TakeRecords(),
              (Lines{inSetAllowList.Trace("mid list is empty"), inSetAllowList.Trace("parse allow list, ret1")}));
}

TEST_F(AllowListDocument, AnEmptyMidListEmptiesTheListAndDoesNotSaySo) {
    EXPECT_TRUE(Set(R"({"mid_list":[]})"));
    EXPECT_EQ(List(), AllowTable{});
    EXPECT_EQ(TakeRecords(), Accepted());
}

TEST_F(AllowListDocument, WhereEveryEntryIsBadTheListBecomesEmpty) {
    EXPECT_TRUE(Set(R"({"mid_list":[{"mid":"MID-1"},{"protocol":["KEY-1"]},{},{"mid":1,"protocol":["KEY-1"]},)"
                    R"({"mid":"MID-1","protocol":"KEY-1"},7,null]})"));
    EXPECT_EQ(List(), AllowTable{});
    EXPECT_EQ(TakeRecords(), Accepted());
}

TEST_F(AllowListDocument, AnEntryWithAnEmptyProtocolArrayAddsNothing) {
    EXPECT_TRUE(Set(R"({"mid_list":[{"mid":"MID-1","protocol":[]},{"mid":"MID-2","protocol":["KEY-1"]}]})"));
    EXPECT_EQ(List(), (AllowTable{{"KEY-1", {"MID-2"}}}));
    EXPECT_EQ(TakeRecords(), Accepted());
}

TEST_F(AllowListDocument, GoodEntriesCountBesideBadOnes) {
    EXPECT_TRUE(Set(R"({"mid_list":[1,{"mid":"MID-1","protocol":["KEY-1"]},{"mid":null,"protocol":["KEY-2"]},)"
                    R"({"mid":"MID-2","protocol":{}},{"mid":"MID-3","protocol":["KEY-3"]}]})"));
    EXPECT_EQ(List(), (AllowTable{{"KEY-1", {"MID-1"}}, {"KEY-3", {"MID-3"}}}));
    EXPECT_EQ(TakeRecords(), Accepted());
}

TEST_F(AllowListDocument, AnElementOfProtocolThatIsNoStringIsPassedOver) {
    EXPECT_TRUE(
        Set(R"({"mid_list":[{"mid":"MID-1","protocol":[1,"KEY-1",null,["KEY-2"],{"KEY-3":1},true,"KEY-4"]}]})"));
    EXPECT_EQ(List(), (AllowTable{{"KEY-1", {"MID-1"}}, {"KEY-4", {"MID-1"}}}));
    EXPECT_EQ(TakeRecords(), Accepted());
}

TEST_F(AllowListDocument, AnEntryWhoseProtocolsAreAllNoStringsLeavesNoEmptySet) {
    EXPECT_TRUE(Set(R"({"mid_list":[{"mid":"MID-1","protocol":[1,null]}]})"));
    EXPECT_EQ(List(), AllowTable{});
}

TEST_F(AllowListDocument, ASecondDocumentLeavesNoTraceOfTheFirst) {
    EXPECT_TRUE(Set(AllowText("MID-1", {"KEY-1", "KEY-2"})));
    EXPECT_TRUE(Set(AllowText("MID-2", {"KEY-2"})));
    EXPECT_EQ(List(), (AllowTable{{"KEY-2", {"MID-2"}}}));
}

TEST_F(AllowListDocument, TwoEntriesOfOneMachineWithOverlappingProtocolsGiveOneElementEach) {
    EXPECT_TRUE(Set(R"({"mid_list":[{"mid":"MID-1","protocol":["KEY-1","KEY-2"]},)"
                    R"({"mid":"MID-1","protocol":["KEY-2","KEY-3","KEY-3"]}]})"));
    EXPECT_EQ(List(), (AllowTable{{"KEY-1", {"MID-1"}}, {"KEY-2", {"MID-1"}}, {"KEY-3", {"MID-1"}}}));
}

TEST_F(AllowListDocument, TheEmptyMidIsStoredAsAnElement) {
    EXPECT_TRUE(Set(AllowText("", {"KEY-1"})));
    EXPECT_EQ(List(), (AllowTable{{"KEY-1", {""}}}));
}

TEST_F(AllowListDocument, TheEmptyProtocolIsTheKeyOfRulesWithoutType) {
    EXPECT_TRUE(Set(AllowText("MID-1", {""})));
    EXPECT_EQ(List(), (AllowTable{{"", {"MID-1"}}}));
    AddRule("GUID-1", "");
    host.answer = AnswerText("GUID-1", {"MID-1"});
    EXPECT_EQ(Decide(), (Verdict{true, REPLY_ALLOW}));
}

TEST_F(AllowListDocument, AnEscapedNulCutsMachineIdAndKey) {
    EXPECT_TRUE(Set(R"({"mid_list":[{"mid":"MID\u0000-1","protocol":["KEY\u0000-1","\u0000KEY"]}]})"));
    EXPECT_EQ(List(), (AllowTable{{"KEY", {"MID"}}, {"", {"MID"}}}));
    EXPECT_EQ(TakeRecords(), Accepted());
}

TEST_F(AllowListDocument, TheTextEndsAtItsFirstNul) {
    EXPECT_TRUE(receiver->SetAllowList("{\"mid_list\":[]}\0{"));
    EXPECT_FALSE(receiver->SetAllowList("{\"mid_list\":\0[]}"));
}

TEST_F(AllowListDocument, InvalidUtf8IsTakenAsItStands) {
    EXPECT_TRUE(Set(AllowText("\xFF\xC3", {"\x80", "\xED\xA0\x80"})));
    EXPECT_EQ(List(), (AllowTable{{"\x80", {"\xFF\xC3"}}, {"\xED\xA0\x80", {"\xFF\xC3"}}}));
}

TEST_F(AllowListDocument, EscapesAreTakenOut) {
    EXPECT_TRUE(Set(R"({"mid_list":[{"mid":"\u004DID\/1","protocol":["\u00e4","\ud83d\ude00"]}]})"));
    EXPECT_EQ(List(), (AllowTable{{"\xC3\xA4", {"MID/1"}}, {"\xF0\x9F\x98\x80", {"MID/1"}}}));
}

TEST_F(AllowListDocument, OfTwoMembersOfOneNameTheFirstCounts) {
    EXPECT_TRUE(Set(R"({"mid_list":[{"mid":"MID-1","mid":"MID-2","protocol":["KEY-1"],"protocol":["KEY-2"]}],)"
                    R"("mid_list":1})"));
    EXPECT_EQ(List(), (AllowTable{{"KEY-1", {"MID-1"}}}));
    EXPECT_EQ(TakeRecords(), Accepted());
}

TEST_F(AllowListDocument, OtherMembersAreIgnored) {
    EXPECT_TRUE(Set(R"({"version":2,"mid_list":[{"name":"x","protocol":["KEY-1"],"mid":"MID-1","MID":1}],"":[]})"));
    EXPECT_EQ(List(), (AllowTable{{"KEY-1", {"MID-1"}}}));
}

TEST_F(AllowListDocument, TheOrderOfEntriesHasNoEffect) {
    EXPECT_TRUE(Set(R"({"mid_list":[{"mid":"B","protocol":["K2","K1"]},{"mid":"A","protocol":["K1"]}]})"));
    const AllowTable first = List();
    EXPECT_TRUE(Set(R"({"mid_list":[{"mid":"A","protocol":["K1"]},{"mid":"B","protocol":["K1","K2"]}]})"));
    EXPECT_EQ(List(), first);
}

TEST_F(AllowListDocument, KeysAndIdsAreOrderedByUnsignedBytesAndThenByLength) {
    const Lines ordered{"", "B", "a", "aa", "\x7F", "\x80", "\xFF"};
    const Lines mixed{"\xFF", "\x7F", "\x80", "aa", "a", "B", ""};
    std::string entries;
    for (const std::string& mid : mixed) {
        entries += (entries.empty() ? "" : ",") + (R"({"mid":")" + mid) + R"(","protocol":["KEY-1"]})";
    }
    std::string keys;
    for (const std::string& key : mixed) {
        keys += (keys.empty() ? "\"" : ",\"") + key + '"';
    }
    EXPECT_TRUE(Set(R"({"mid_list":[)" + entries + R"(,{"mid":"MID-1","protocol":[)" + keys + "]}]}"));
    Lines keysInTable;
    for (const auto& [key, mids] : List()) {
        keysInTable.push_back(key);
    }
    keysInTable.erase(std::find(keysInTable.begin(), keysInTable.end(), "KEY-1"));
    EXPECT_EQ(keysInTable, ordered);
    const AllowedMids& mids = List().at("KEY-1");
    EXPECT_EQ(Lines(mids.begin(), mids.end()), ordered);
    for (size_t i = 0; i + 1 < ordered.size(); ++i) {
        std::string matched;
        EXPECT_TRUE(receiver->IsMatchmid("KEY-1", Views({ordered[i + 1], ordered[i]}).views, &matched));
        EXPECT_EQ(matched, ordered[i]) << "the smaller of two";
    }
}

TEST_F(AllowListDocument, ClearEmptiesTheList) {
    EXPECT_TRUE(receiver->ClearAllowList());
    EXPECT_EQ(List(), AllowTable{});
    EXPECT_EQ(TakeRecords(), Lines{inClearAllowList.Trace("ClearAllowList_mids start")});
}

TEST_F(AllowListDocument, ClearOfAnEmptyListReturnsTrueAndLogsItsLine) {
    Fields().SetAllowedMids({});
    EXPECT_TRUE(receiver->ClearAllowList());
    EXPECT_EQ(List(), AllowTable{});
    EXPECT_EQ(TakeRecords(), Lines{inClearAllowList.Trace("ClearAllowList_mids start")});
}

TEST_F(AllowListDocument, NeitherOperationNeedsInit) {
    CMordRecv fresh;
    EXPECT_TRUE(fresh.SetAllowList(AllowText("MID-1", {"KEY-1"}).c_str()));
    EXPECT_EQ(MordRevFields(fresh).AllowedMids(), (AllowTable{{"KEY-1", {"MID-1"}}}));
    EXPECT_TRUE(fresh.ClearAllowList());
    EXPECT_EQ(MordRevFields(fresh).AllowedMids(), AllowTable{});
}

TEST_F(AllowListDocument, TheActionTableStays) {
    Fields().Actions() = {{"TYPE-1", true}};
    Set(AllowText("MID-1", {"KEY-1"}));
    receiver->ClearAllowList();
    EXPECT_EQ(Fields().Actions(), (ActionTable{{"TYPE-1", true}}));
}

TEST_F(AllowListDocument, TheLockIsFreeAfterEachWay) {
    for (const char* const text : {"", "{}", R"({"mid_list":1})", R"({"mid_list":[]})"}) {
        Set(text);
        ASSERT_TRUE(Fields().Lock().try_lock());
        Fields().Lock().unlock();
    }
    receiver->ClearAllowList();
    ASSERT_TRUE(Fields().Lock().try_lock());
    Fields().Lock().unlock();
}

} // namespace
