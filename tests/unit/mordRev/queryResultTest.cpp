// The query result: what an answer makes of the table.
#include "unit/mordRev/decisionFixture.h"

using namespace kit;

namespace {

class QueryResult : public DecisionFixture {
protected:
    bool Parse(std::string text) { return receiver->ParseQueryResult(std::move(text), &table); }

    // The table must hold this and nothing else.
    void ExpectTable(const std::map<std::string, std::set<std::string>>& expected) {
        EXPECT_EQ(table.Size(), expected.size());
        for (const auto& [guid, mids] : expected) {
            const MidSet* const found = table.Find(guid);
            ASSERT_NE(found, nullptr) << guid;
            EXPECT_EQ(TextsOf(*found), mids) << guid;
        }
    }

    // The second of three rules ends the scan with `error`: what stood before it stays, what stands behind it is not
    // looked at.
    void ExpectScanEndsAt(const std::string& rule, const std::string& error) {
        SCOPED_TRACE(rule);
        table = {};
        EXPECT_TRUE(Parse(R"({"before":{"value":1,"mid":{"m":1}},"a":)" + rule + R"(,"b":{"value":1,"mid":{}}})"));
        ExpectTable({{"before", {"m"}}});
        EXPECT_EQ(TakeRecords(), (Lines{Guid("before"), Mid("m"), Guid("a"), error}));
    }

    static std::string Guid(const std::string& guid) { return inParseQueryResult.Trace("guid is:" + guid); }
    static std::string Mid(const std::string& mid) { return inParseQueryResult.Trace("get mid=" + mid); }
    static std::string ValueError() { return inParseQueryResult.Error("The down_packet (value)data errror"); }
    static std::string ValueIs0() { return inParseQueryResult.Error("The down_packet error, value=0"); }
    static std::string MidError() { return inParseQueryResult.Error("The down_packet (mid)data error"); }

    QueryResultTable table;
};

TEST_F(QueryResult, ListsTheMachineIdsOfEachRule) {
    EXPECT_TRUE(Parse(R"({"A-guid":{"value":1,"mid":{"mid-1":1,"mid-2":1}},"B-guid":{"value":0}})"));
    ExpectTable({{"A-guid", {"mid-1", "mid-2"}}});
    EXPECT_EQ(TakeRecords(), (Lines{Guid("A-guid"), Mid("mid-1"), Mid("mid-2"), Guid("B-guid"), ValueIs0()}));
}

TEST_F(QueryResult, EmptyTextIsAParameterErrorAndTheTableIsUntouched) {
    InsertMids(table, "before", {"mid"});
    EXPECT_FALSE(Parse(""));
    ExpectTable({{"before", {"mid"}}});
    EXPECT_EQ(TakeRecords(), Lines{inParseQueryResult.Error("param error")});
}

TEST_F(QueryResult, BlanksAloneAreADataFormatErrorAndTheTableIsUntouched) {
    InsertMids(table, "before", {"mid"});
    EXPECT_FALSE(Parse(" \t\r\n"));
    ExpectTable({{"before", {"mid"}}});
    EXPECT_EQ(TakeRecords(), Lines{inParseQueryResult.Error("data format error.")});
}

TEST_F(QueryResult, MalformedJsonIsADataFormatErrorAndTheTableIsUntouched) {
    InsertMids(table, "before", {"mid"});
    for (const char* const text :
         {"{", R"({"a":{"value":1,"mid":{"m":1}})", R"({"a":{"value":1,"mid":{"m":1}},})", "{'a':1}", "// \n{}",
          R"({"a":{"value":NaN}})", R"({"a":{"value":Infinity}})", R"({"a":[1,]})", "nope", "\xEF\xBB\xBF{}"}) {
        EXPECT_FALSE(Parse(text)) << text;
        ExpectTable({{"before", {"mid"}}});
        EXPECT_EQ(TakeRecords(), Lines{inParseQueryResult.Error("data format error.")}) << text;
    }
}

TEST_F(QueryResult, TextBehindTheRootIsADataFormatErrorAndTheTableIsUntouched) {
    InsertMids(table, "before", {"mid"});
    EXPECT_FALSE(Parse(AnswerText("a", {"m"}) + " x"));
    ExpectTable({{"before", {"mid"}}});
    EXPECT_EQ(TakeRecords(), Lines{inParseQueryResult.Error("data format error.")});
}

TEST_F(QueryResult, AnEmptyRootObjectGivesTrueAnEmptyTableAndLogsNothing) {
    EXPECT_TRUE(Parse("{}"));
    ExpectTable({});
    EXPECT_EQ(TakeRecords(), Lines{});
}

TEST_F(QueryResult, ARootOfAnotherKindIsOneWithoutMembers) {
    for (const char* const text : {"null", "true", "false", "0", "1", "-1.5", R"("text")", R"("")", "[]",
                                   R"([{"value":1,"mid":{"m":1}}])", R"(["a"])"}) {
        EXPECT_TRUE(Parse(text)) << text;
        ExpectTable({});
        EXPECT_EQ(TakeRecords(), Lines{}) << text;
    }
}

TEST_F(QueryResult, AMidObjectWithoutMembersGivesAnEntryWithAnEmptySet) {
    EXPECT_TRUE(Parse(AnswerText("a", {})));
    ExpectTable({{"a", {}}});
    EXPECT_EQ(TakeRecords(), Lines{Guid("a")});
}

TEST_F(QueryResult, AMissingValueEndsTheScanAndWhatStoodBeforeStays) {
    EXPECT_TRUE(Parse(R"({"a":{"value":1,"mid":{"m":1}},"b":{"mid":{"m":1}},"c":{"value":1,"mid":{"m":1}}})"));
    ExpectTable({{"a", {"m"}}});
    EXPECT_EQ(TakeRecords(), (Lines{Guid("a"), Mid("m"), Guid("b"), ValueError()}));
}

TEST_F(QueryResult, ValueIsMatchedByteForByte) {
    EXPECT_TRUE(Parse(R"({"a":{"Value":1,"VALUE":1,"value ":1,"value\u0000":1,"mid":{"m":1}}})"));
    ExpectTable({});
    EXPECT_EQ(TakeRecords(), (Lines{Guid("a"), ValueError()}));
}

TEST_F(QueryResult, MidIsMatchedByteForByte) {
    EXPECT_TRUE(Parse(R"({"a":{"value":1,"Mid":{"m":1},"mid\u0000":{"m":1}}})"));
    ExpectTable({});
    EXPECT_EQ(TakeRecords(), (Lines{Guid("a"), MidError()}));
}

TEST_F(QueryResult, AValueOfAnotherKindEndsTheScan) {
    for (const char* const value : {"null", "true", "false", R"("1")", R"("")", "[]", "[1]", "{}", R"({"value":1})"}) {
        ExpectScanEndsAt(std::string(R"({"value":)") + value + R"(,"mid":{"m":1}})", ValueError());
    }
}

TEST_F(QueryResult, AValueGivenAsAStringEndsTheScan) {
    ExpectScanEndsAt(R"({"value":"1","mid":{"m":1}})", ValueError());
}

TEST_F(QueryResult, EveryNumberThatFitsASigned32BitIntegerIsGoodBut0) {
    for (const char* const value : {"1", "-1", "2", "2147483647", "-2147483648"}) {
        table = {};
        EXPECT_TRUE(Parse(std::string(R"({"a":{"value":)") + value + R"(,"mid":{"m":1}}})"));
        ExpectTable({{"a", {"m"}}});
        EXPECT_EQ(TakeRecords(), (Lines{Guid("a"), Mid("m")})) << value;
    }
}

TEST_F(QueryResult, AFractionAnExponentOrANumberOutsideTheRangeEndsTheScan) {
    for (const char* const value :
         {"1.5", "1.0", "1e0", "1E0", "0.0", "0e1", "-0.0", "2147483648", "-2147483649", "4294967295", "4294967296",
          "9223372036854775807", "-9223372036854775808", "18446744073709551615", "18446744073709551616", "1e308"}) {
        ExpectScanEndsAt(std::string(R"({"value":)") + value + R"(,"mid":{"m":1}})", ValueError());
    }
}

TEST_F(QueryResult, AValueOf0SkipsThisRuleAndTheScanGoesOn) {
    EXPECT_TRUE(
        Parse(R"({"a":{"value":1,"mid":{"m":1}},"b":{"value":0,"mid":{"n":1}},"c":{"value":1,"mid":{"o":1}}})"));
    ExpectTable({{"a", {"m"}}, {"c", {"o"}}});
    EXPECT_EQ(TakeRecords(), (Lines{Guid("a"), Mid("m"), Guid("b"), ValueIs0(), Guid("c"), Mid("o")}));
}

TEST_F(QueryResult, AValueOfMinus0Is0) {
    EXPECT_TRUE(Parse(R"({"a":{"value":-0,"mid":{"m":1}}})"));
    ExpectTable({});
    EXPECT_EQ(TakeRecords(), (Lines{Guid("a"), ValueIs0()}));
}

TEST_F(QueryResult, AValueOf0SkipsAlsoWhereMidIsMissing) {
    EXPECT_TRUE(Parse(R"({"a":{"value":0},"b":{"value":0,"mid":1},"c":{"value":1,"mid":{}}})"));
    ExpectTable({{"c", {}}});
    EXPECT_EQ(TakeRecords(), (Lines{Guid("a"), ValueIs0(), Guid("b"), ValueIs0(), Guid("c")}));
}

TEST_F(QueryResult, AMissingMidEndsTheScanAndWhatStoodBeforeStays) {
    EXPECT_TRUE(Parse(R"({"a":{"value":1,"mid":{"m":1}},"b":{"value":1},"c":{"value":1,"mid":{"m":1}}})"));
    ExpectTable({{"a", {"m"}}});
    EXPECT_EQ(TakeRecords(), (Lines{Guid("a"), Mid("m"), Guid("b"), MidError()}));
}

TEST_F(QueryResult, AMidThatIsNoObjectEndsTheScan) {
    for (const char* const mid : {"null", "true", "false", "0", "1", "1.5", R"("m")", "[]", R"(["m"])"}) {
        ExpectScanEndsAt(std::string(R"({"value":1,"mid":)") + mid + "}", MidError());
    }
}

TEST_F(QueryResult, ARuleThatIsNullABooleanOrAnEmptyArrayEndsTheScan) {
    for (const char* const rule : {"null", "true", "false", "[]"}) {
        ExpectScanEndsAt(rule, ValueError());
    }
}

TEST_F(QueryResult, ARuleOfAnyOtherKindEndsTheScanToo) {
    for (const char* const rule : {"0", "1", "1.5", R"("value")", R"("")", R"(["value",1])", "[{}]", "{}"}) {
        ExpectScanEndsAt(rule, ValueError());
    }
}

TEST_F(QueryResult, TheValuesOfMachineIdsAreNeverRead) {
    EXPECT_TRUE(Parse(R"({"a":{"value":1,"mid":{"1":null,"2":false,"3":0,"4":"x","5":[1],"6":{"7":1},"8":1e300}}})"));
    ExpectTable({{"a", {"1", "2", "3", "4", "5", "6", "8"}}});
    EXPECT_EQ(TakeRecords(), (Lines{Guid("a"), Mid("1"), Mid("2"), Mid("3"), Mid("4"), Mid("5"), Mid("6"), Mid("8")}));
}

TEST_F(QueryResult, OtherMembersOfARuleAreIgnored) {
    EXPECT_TRUE(Parse(R"({"a":{"name":"x","mid":{"m":1},"":null,"value":1,"more":[{}]}})"));
    ExpectTable({{"a", {"m"}}});
    EXPECT_EQ(TakeRecords(), (Lines{Guid("a"), Mid("m")}));
}

TEST_F(QueryResult, OfAGuidThatStandsTwiceTheFirstDecidesAndTheSecondIsLoggedButDropped) {
    EXPECT_TRUE(Parse(R"({"a":{"value":1,"mid":{"m":1}},"a":{"value":1,"mid":{"n":1,"o":1}}})"));
    ExpectTable({{"a", {"m"}}});
    EXPECT_EQ(TakeRecords(), (Lines{Guid("a"), Mid("m"), Guid("a"), Mid("n"), Mid("o")}));
}

TEST_F(QueryResult, OfAGuidThatStandsTwiceTheFirstThatReachesTheTableDecides) {
    EXPECT_TRUE(Parse(R"({"a":{"value":0},"a":{"value":1,"mid":{"n":1}},"a":{"value":1,"mid":{"o":1}}})"));
    ExpectTable({{"a", {"n"}}});
    EXPECT_EQ(TakeRecords(), (Lines{Guid("a"), ValueIs0(), Guid("a"), Mid("n"), Guid("a"), Mid("o")}));
}

TEST_F(QueryResult, AMachineIdThatStandsTwiceIsLoggedTwiceAndHeldOnce) {
    EXPECT_TRUE(Parse(AnswerText("a", {"m", "m"})));
    ExpectTable({{"a", {"m"}}});
    EXPECT_EQ(TakeRecords(), (Lines{Guid("a"), Mid("m"), Mid("m")}));
}

TEST_F(QueryResult, OfTwoValuesTheFirstCounts) {
    EXPECT_TRUE(Parse(R"({"a":{"value":1,"value":0,"mid":{"m":1}},"b":{"value":0,"value":1,"mid":{"m":1}}})"));
    ExpectTable({{"a", {"m"}}});
    EXPECT_EQ(TakeRecords(), (Lines{Guid("a"), Mid("m"), Guid("b"), ValueIs0()}));
}

TEST_F(QueryResult, OfTwoMidsTheFirstCounts) {
    EXPECT_TRUE(Parse(R"({"a":{"value":1,"mid":{"m":1},"mid":{"n":1}},"b":{"value":1,"mid":1,"mid":{"n":1}}})"));
    ExpectTable({{"a", {"m"}}});
    EXPECT_EQ(TakeRecords(), (Lines{Guid("a"), Mid("m"), Guid("b"), MidError()}));
}

TEST_F(QueryResult, EmptyNamesAreLikeAnyOther) {
    EXPECT_TRUE(Parse(AnswerText("", {"", "m"})));
    ExpectTable({{"", {"", "m"}}});
    EXPECT_EQ(TakeRecords(), (Lines{Guid(""), Mid(""), Mid("m")}));
}

TEST_F(QueryResult, ATextWithANulInsideEndsThere) {
    EXPECT_TRUE(Parse(AnswerText("a", {"m"}) + std::string("\0 no json", 9)));
    ExpectTable({{"a", {"m"}}});
    EXPECT_EQ(TakeRecords(), (Lines{Guid("a"), Mid("m")}));
    EXPECT_FALSE(Parse(std::string("{\"b\":\0{}}", 9)));
    ExpectTable({{"a", {"m"}}});
    EXPECT_EQ(TakeRecords(), Lines{inParseQueryResult.Error("data format error.")});
}

TEST_F(QueryResult, ATextThatBeginsWithANulIsADataFormatErrorNotAnEmptyText) {
    EXPECT_FALSE(Parse(std::string("\0{}", 3)));
    EXPECT_EQ(TakeRecords(), Lines{inParseQueryResult.Error("data format error.")});
}

TEST_F(QueryResult, GuidsAndMachineIdsKeepAnEscapedNul) {
    EXPECT_TRUE(Parse(AnswerText(R"(a\u0000b)", {R"(m\u0000n)", R"(\u0000)", "m"})));
    ExpectTable({{std::string("a\0b", 3), {std::string("m\0n", 3), std::string("\0", 1), "m"}}});
    EXPECT_EQ(table.Find("a"), nullptr);
    EXPECT_EQ(TakeRecords(), (Lines{Guid("a"), Mid("m"), Mid(""), Mid("m")}));
}

TEST_F(QueryResult, InvalidUtf8IsTakenAsItStands) {
    EXPECT_TRUE(Parse(AnswerText("\xFF\xC3", {"\x80", "\xED\xA0\x80"})));
    ExpectTable({{"\xFF\xC3", {"\x80", "\xED\xA0\x80"}}});
}

TEST_F(QueryResult, TheTableIsAddedToAndNotCleared) {
    InsertMids(table, "before", {"m"});
    EXPECT_TRUE(Parse(R"({"before":{"value":1,"mid":{"n":1}},"a":{"value":1,"mid":{"o":1}}})"));
    ExpectTable({{"before", {"m"}}, {"a", {"o"}}});
}

TEST_F(QueryResult, NoFieldOfTheReceiverIsTouched) {
    Fields().SetAllowedMids({{"KEY-1", {"MID-1"}}});
    Fields().Actions() = {{"TYPE-1", true}};
    Parse(AnswerText("a", {"m"}));
    EXPECT_EQ(Fields().AllowedMids(), (AllowTable{{"KEY-1", {"MID-1"}}}));
    EXPECT_EQ(Fields().Actions(), (ActionTable{{"TYPE-1", true}}));
    EXPECT_EQ(Fields().Mid(), "LOCAL-MID");
    EXPECT_EQ(TakeCalls(), Lines{});
}

TEST_F(QueryResult, ManyRulesWithManyIdsAreAllHeld) {
    std::string text = "{";
    for (int rule = 0; rule < 300; ++rule) {
        text += (rule == 0 ? "\"g" : ",\"g") + std::to_string(rule) + R"(":{"value":1,"mid":{)";
        for (int mid = 0; mid < 40; ++mid) {
            text += (mid == 0 ? "\"m" : ",\"m") + std::to_string(rule * 40 + mid) + "\":1";
        }
        text += "}}";
    }
    EXPECT_TRUE(Parse(text + "}"));
    EXPECT_EQ(table.Size(), 300U);
    ASSERT_NE(table.Find("g299"), nullptr);
    EXPECT_EQ(table.Find("g299")->size(), 40U);
    EXPECT_TRUE(TextsOf(*table.Find("g299")).contains("m11999"));
}

} // namespace
