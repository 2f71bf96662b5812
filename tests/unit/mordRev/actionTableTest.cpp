// The action document and the table that it fills.
#include "unit/mordRev/decisionFixture.h"

using namespace kit;

namespace {

const ActionTable oldTable{{"OLD-TYPE", true}};

class ActionDocument : public DecisionFixture {
protected:
    void SetUp() override {
        DecisionFixture::SetUp();
        Fields().Actions() = oldTable;
    }

    bool Parse(const std::string& text) { return receiver->ParseActionJson(text.c_str()); }
    const ActionTable& Table() { return Fields().Actions(); }

    static std::string KeyError(const std::string& key) {
        return inParseActionJson.Error("key " + key + " format error");
    }
    // The records of a call with these errors.
    static Lines Records(const Lines& errors, const char* result) {
        return Joined({errors, {inParseActionJson.Trace(std::string("type action parse ret=") + result)}});
    }
    static Lines Empty(const Lines& errors = {}) {
        return Records(Joined({errors, {inParseActionJson.Error("action json is empty")}}), "0");
    }
    static Lines Malformed() { return Records({inParseActionJson.Error("action json is invalid json format")}, "0"); }
};

TEST_F(ActionDocument, EachMemberIsARow) {
    EXPECT_TRUE(Parse(R"({"TYPE-1":1,"TYPE-2":0})"));
    EXPECT_EQ(Table(), (ActionTable{{"TYPE-1", true}, {"TYPE-2", false}}));
    EXPECT_EQ(TakeRecords(), Records({}, "1"));
}

TEST_F(ActionDocument, EmptyTextIsMalformedAndTheTableStays) {
    EXPECT_FALSE(Parse(""));
    EXPECT_EQ(Table(), oldTable);
    EXPECT_EQ(TakeRecords(), Malformed());
}

TEST_F(ActionDocument, BlanksAloneAreMalformedAndTheTableStays) {
    EXPECT_FALSE(Parse(" \t\r\n"));
    EXPECT_EQ(Table(), oldTable);
    EXPECT_EQ(TakeRecords(), Malformed());
}

TEST_F(ActionDocument, MalformedJsonLeavesTheTable) {
    for (const char* const text : {"{", R"({"TYPE-1":1)", R"({"TYPE-1":1,})", R"({"TYPE-1":})", R"({"TYPE-1":+1})",
                                   R"({TYPE-1:1})", R"({"TYPE-1":01})", R"({"TYPE-1":1}])", R"({"TYPE-1":tru})"}) {
        EXPECT_FALSE(Parse(text)) << text;
        EXPECT_EQ(Table(), oldTable) << text;
        EXPECT_EQ(TakeRecords(), Malformed()) << text;
    }
}

TEST_F(ActionDocument, TextBehindTheRootIsMalformedAndTheTableStays) {
    EXPECT_FALSE(Parse(R"({"TYPE-1":1} x)"));
    EXPECT_EQ(Table(), oldTable);
    EXPECT_EQ(TakeRecords(), Malformed());
}

TEST_F(ActionDocument, ARootWithoutMembersEmptiesTheTableAndIsRefused) {
    EXPECT_FALSE(Parse(" {} "));
    EXPECT_EQ(Table(), ActionTable{});
    EXPECT_EQ(TakeRecords(), Empty());
}

TEST_F(ActionDocument, EveryMemberBadLogsEachAndEmptiesTheTable) {
    EXPECT_FALSE(Parse(R"({"TYPE-1":"1","TYPE-2":true,"TYPE-3":null})"));
    EXPECT_EQ(Table(), ActionTable{});
    EXPECT_EQ(TakeRecords(), Empty({KeyError("TYPE-1"), KeyError("TYPE-2"), KeyError("TYPE-3")}));
}

TEST_F(ActionDocument, OneGoodAndOneBadMemberKeepTheGoodRowAndGiveTrue) {
    EXPECT_TRUE(Parse(R"({"TYPE-1":1.5,"TYPE-2":1})"));
    EXPECT_EQ(Table(), (ActionTable{{"TYPE-2", true}}));
    EXPECT_EQ(TakeRecords(), Records({KeyError("TYPE-1")}, "1"));
}

TEST_F(ActionDocument, BadMembersAreLoggedInDocumentOrder) {
    EXPECT_TRUE(Parse(R"({"Z":[],"TYPE-1":1,"A":{},"TYPE-2":0,"M":"x"})"));
    EXPECT_EQ(Table(), (ActionTable{{"TYPE-1", true}, {"TYPE-2", false}}));
    EXPECT_EQ(TakeRecords(), Records({KeyError("Z"), KeyError("A"), KeyError("M")}, "1"));
}

TEST_F(ActionDocument, ASecondDocumentLeavesNoRowOfTheFirst) {
    EXPECT_TRUE(Parse(R"({"TYPE-1":1,"TYPE-2":1})"));
    EXPECT_TRUE(Parse(R"({"TYPE-2":0})"));
    EXPECT_EQ(Table(), (ActionTable{{"TYPE-2", false}}));
}

TEST_F(ActionDocument, EveryNumberBut0IsTheAction1) {
    EXPECT_TRUE(Parse(R"({"a":2,"b":-1,"c":2147483647,"d":-2147483648,"e":1,"f":0,"g":-0})"));
    EXPECT_EQ(
        Table(),
        (ActionTable{{"a", true}, {"b", true}, {"c", true}, {"d", true}, {"e", true}, {"f", false}, {"g", false}}));
    EXPECT_EQ(TakeRecords(), Records({}, "1"));
}

TEST_F(ActionDocument, ARowOf0AloneIsAUsableRow) {
    EXPECT_TRUE(Parse(R"({"TYPE-1":0})"));
    EXPECT_EQ(Table(), (ActionTable{{"TYPE-1", false}}));
    EXPECT_EQ(TakeRecords(), Records({}, "1"));
}

TEST_F(ActionDocument, NumbersThatFitNoSigned32BitIntegerAreRefused) {
    for (const char* const number :
         {"1.5", "1.0", "1e0", "1E2", "-1.0", "0.0", "0e0", "2147483648", "-2147483649", "4294967295", "4294967296",
          "9223372036854775807", "-9223372036854775808", "18446744073709551615", "18446744073709551616", "1e300"}) {
        EXPECT_FALSE(Parse(std::string(R"({"TYPE-1":)") + number + "}")) << number;
        EXPECT_EQ(TakeRecords(), Empty({KeyError("TYPE-1")})) << number;
        EXPECT_EQ(Table(), ActionTable{});
    }
}

TEST_F(ActionDocument, ValuesOfEveryOtherKindAreRefusedByName) {
    for (const char* const value : {"null", "true", "false", R"("1")", R"("")", "[]", "[1]", "{}", R"({"TYPE-1":1})"}) {
        EXPECT_TRUE(Parse(std::string(R"({"bad":)") + value + R"(,"good":1})")) << value;
        EXPECT_EQ(TakeRecords(), Records({KeyError("bad")}, "1")) << value;
        EXPECT_EQ(Table(), (ActionTable{{"good", true}})) << value;
    }
}

TEST_F(ActionDocument, ARootOfAnotherKindEmptiesTheTableAndIsEmpty) {
    for (const char* const text :
         {"null", "true", "false", "0", "1", "-1", "1.5", R"("TYPE-1")", R"("")", "[]", R"([{"TYPE-1":1}])", "[1,2]"}) {
        Fields().Actions() = oldTable;
        EXPECT_FALSE(Parse(text)) << text;
        EXPECT_EQ(Table(), ActionTable{}) << text;
        EXPECT_EQ(TakeRecords(), Empty()) << text;
    }
}

TEST_F(ActionDocument, TheEmptyNameIsRefusedWithNothingBetweenTheTexts) {
    EXPECT_TRUE(Parse(R"({"":1,"TYPE-1":1})"));
    EXPECT_EQ(Table(), (ActionTable{{"TYPE-1", true}}));
    EXPECT_EQ(TakeRecords(), Records({KeyError("")}, "1"));
}

TEST_F(ActionDocument, ANameIsCutAtItsFirstNul) {
    EXPECT_TRUE(Parse(R"({"TYPE\u0000-1":1})"));
    EXPECT_EQ(Table(), (ActionTable{{"TYPE", true}}));
    EXPECT_EQ(TakeRecords(), Records({}, "1"));
}

TEST_F(ActionDocument, ANameThatBeginsWithANulIsEmpty) {
    EXPECT_FALSE(Parse(R"({"\u0000TYPE-1":1})"));
    EXPECT_EQ(Table(), ActionTable{});
    EXPECT_EQ(TakeRecords(), Empty({KeyError("")}));
}

TEST_F(ActionDocument, OfAKeyThatStandsTwiceTheLastValueWins) {
    EXPECT_TRUE(Parse(R"({"TYPE-1":1,"TYPE-2":0,"TYPE-1":0,"TYPE-2":5})"));
    EXPECT_EQ(Table(), (ActionTable{{"TYPE-1", false}, {"TYPE-2", true}}));
    EXPECT_TRUE(Parse(R"({"TYPE-1":1,"TYPE-1\u0000x":0})"));
    EXPECT_EQ(Table(), (ActionTable{{"TYPE-1", false}}));
}

TEST_F(ActionDocument, ABadSecondValueLeavesTheFirstRow) {
    EXPECT_TRUE(Parse(R"({"TYPE-1":1,"TYPE-1":"0"})"));
    EXPECT_EQ(Table(), (ActionTable{{"TYPE-1", true}}));
    EXPECT_EQ(TakeRecords(), Records({KeyError("TYPE-1")}, "1"));
}

TEST_F(ActionDocument, InvalidUtf8IsTakenAsItStands) {
    EXPECT_TRUE(Parse("{\"\xFF\xC3\":1}"));
    EXPECT_EQ(Table(), (ActionTable{{"\xFF\xC3", true}}));
}

TEST_F(ActionDocument, KeysAreOrderedByUnsignedBytesAndThenByLength) {
    EXPECT_TRUE(Parse("{\"\xFF\":1,\"\x7F\":1,\"\x80\":1,\"aa\":1,\"a\":1,\"B\":1}"));
    Lines keys;
    for (const auto& [type, action] : Table()) {
        keys.push_back(type);
    }
    EXPECT_EQ(keys, (Lines{"B", "a", "aa", "\x7F", "\x80", "\xFF"}));
}

TEST_F(ActionDocument, SetPropertyHandsTheTextOnAndReturnsTheResult) {
    char good[] = R"({"TYPE-1":1})";
    EXPECT_TRUE(receiver->SetProperty(PROP_ACTION_JSON, good, 1));
    EXPECT_EQ(Table(), (ActionTable{{"TYPE-1", true}}));
    EXPECT_EQ(TakeRecords(), Records({}, "1"));
    char malformed[] = "{";
    EXPECT_FALSE(receiver->SetProperty(PROP_ACTION_JSON, malformed, sizeof malformed));
    EXPECT_EQ(Table(), (ActionTable{{"TYPE-1", true}}));
    EXPECT_EQ(TakeRecords(), Malformed());
    char empty[] = "{}";
    EXPECT_FALSE(receiver->SetProperty(PROP_ACTION_JSON, empty, 0xFFFFFFFF));
    EXPECT_EQ(Table(), ActionTable{});
    EXPECT_EQ(TakeRecords(), Empty());
}

TEST_F(ActionDocument, TheAllowListStays) {
    Fields().SetAllowedMids({{"KEY-1", {"MID-1"}}});
    Parse(R"({"TYPE-1":1})");
    Parse("{}");
    EXPECT_EQ(Fields().AllowedMids(), (AllowTable{{"KEY-1", {"MID-1"}}}));
}

TEST_F(ActionDocument, TheLockIsFreeAfterEachWay) {
    for (const char* const text : {"", "{}", R"({"TYPE-1":1})", R"({"TYPE-1":null})", "[]"}) {
        Parse(text);
        ASSERT_TRUE(Fields().Lock().try_lock());
        Fields().Lock().unlock();
    }
}

} // namespace
