// Documents of a million levels, and of 64 MiB, on a thread with little stack: answered as a plain parse with the
// default flags would accept or refuse them, if it had the stack.
#include "kit/system/smallStack.h"
#include "unit/mordRev/decisionFixture.h"

using namespace kit;

namespace {

constexpr size_t million = 1000000;
constexpr size_t mebibyte = 1024 * 1024;

std::string Repeated(const std::string& text, size_t count) {
    std::string all;
    all.reserve(text.size() * count);
    for (size_t i = 0; i < count; ++i) {
        all += text;
    }
    return all;
}

// `levels` arrays, or objects of one member "a" around a 1, one in the other.
std::string Arrays(size_t levels) {
    return std::string(levels, '[') + std::string(levels, ']');
}
std::string OpenObjects(size_t levels) {
    return Repeated(R"({"a":)", levels);
}
std::string Objects(size_t levels) {
    return OpenObjects(levels) + "1" + std::string(levels, '}');
}

class Nesting : public DecisionFixture {
protected:
    void SetUp() override {
        DecisionFixture::SetUp();
        AddRule("GUID-1", "TYPE-1");
        Fields().SetAllowedMids(oldList);
        Fields().Actions() = oldActions;
    }

    bool Set(const std::string& text) {
        bool result = false;
        RunOnSmallStack([&] { result = receiver->SetAllowList(text.c_str()); });
        return result;
    }
    bool SetAction(std::string text) {
        bool result = false;
        RunOnSmallStack([&] { result = receiver->SetProperty(PROP_ACTION_JSON, text.data(), 1); });
        return result;
    }
    Verdict DecideBy(std::string answer) {
        host.answer = std::move(answer);
        Verdict verdict{};
        RunOnSmallStack([&] { verdict = Decide(); });
        EXPECT_EQ(host.AnswersOut(), 0U);
        return verdict;
    }

    static Lines Refused(const std::string& error) {
        return {inSetAllowList.Error(error), inSetAllowList.Trace("parse allow list, ret0")};
    }

    // The records of an event from behind the line of the answer to before the report.
    Lines RecordsOfParsing() {
        Lines records = TakeRecords();
        EXPECT_GE(records.size(), 5U);
        return {records.begin() + 2, records.end() - 3};
    }

    const AllowTable oldList{{"OLD-KEY", {"OLD-MID"}}};
    const ActionTable oldActions{{"OLD-TYPE", true}};
};

TEST_F(Nesting, TheStackOfTheseTestsIsSmall) {
    size_t left = 0;
    RunOnSmallStack([&left] { left = StackLeft(); });
    EXPECT_GT(left, smallStackSize / 2);
    EXPECT_LE(left, smallStackSize);
}

TEST_F(Nesting, AllowListOfAMillionArraysIsARootWithoutMidList) {
    EXPECT_FALSE(Set(Arrays(million)));
    EXPECT_EQ(TakeRecords(), Refused("format error"));
    EXPECT_EQ(Fields().AllowedMids(), oldList);
}

TEST_F(Nesting, AllowListOfAMillionObjectsIsARootWithoutMidList) {
    EXPECT_FALSE(Set(Objects(million)));
    EXPECT_EQ(TakeRecords(), Refused("format error"));
    EXPECT_EQ(Fields().AllowedMids(), oldList);
}

TEST_F(Nesting, AllowListOfAMillionUnclosedArraysIsRefusedWithCodeAndOffset) {
    EXPECT_FALSE(Set(std::string(million, '[')));
    EXPECT_EQ(TakeRecords(), Refused("error_code3error_offset1000000"));
    EXPECT_FALSE(Set(std::string(million, '[') + "1"));
    EXPECT_EQ(TakeRecords(), Refused("error_code7error_offset1000001"));
    EXPECT_FALSE(Set(std::string(million, '[') + std::string(million - 1, ']')));
    EXPECT_EQ(TakeRecords(), Refused("error_code7error_offset1999999"));
    EXPECT_EQ(Fields().AllowedMids(), oldList);
}

TEST_F(Nesting, AllowListOfAMillionUnclosedObjectsIsRefusedWithCodeAndOffset) {
    EXPECT_FALSE(Set(OpenObjects(million)));
    EXPECT_EQ(TakeRecords(), Refused("error_code3error_offset5000000"));
    EXPECT_FALSE(Set(Repeated(R"({"a")", million)));
    EXPECT_EQ(TakeRecords(), Refused("error_code5error_offset4"));
    EXPECT_FALSE(Set(OpenObjects(million) + "{"));
    EXPECT_EQ(TakeRecords(), Refused("error_code4error_offset5000001"));
    EXPECT_FALSE(Set(OpenObjects(million) + "1" + std::string(million - 1, '}')));
    EXPECT_EQ(TakeRecords(), Refused("error_code6error_offset6000000"));
    EXPECT_EQ(Fields().AllowedMids(), oldList);
}

TEST_F(Nesting, AllowListOfAMillionArraysWithTheWrongEndIsRefusedWithCodeAndOffset) {
    EXPECT_FALSE(Set(std::string(million, '[') + "}"));
    EXPECT_EQ(TakeRecords(), Refused("error_code3error_offset1000000"));
    EXPECT_FALSE(Set(std::string(million, '[') + "]}"));
    EXPECT_EQ(TakeRecords(), Refused("error_code7error_offset1000001"));
    EXPECT_FALSE(Set(Arrays(million) + "]"));
    EXPECT_EQ(TakeRecords(), Refused("error_code2error_offset2000000"));
    EXPECT_EQ(Fields().AllowedMids(), oldList);
}

TEST_F(Nesting, AllowListWithAMillionLevelsAsMidListEmptiesTheList) {
    EXPECT_TRUE(Set(R"({"mid_list":)" + Arrays(million) + "}"));
    EXPECT_EQ(TakeRecords(), Lines{inSetAllowList.Trace("parse allow list, ret1")});
    EXPECT_EQ(Fields().AllowedMids(), AllowTable{});
    EXPECT_TRUE(Set(R"({"mid_list":)" + Objects(million) + "}"));
    EXPECT_EQ(TakeRecords(),
              (Lines{inSetAllowList.Trace("mid list is empty"), inSetAllowList.Trace("parse allow list, ret1")}));
}

TEST_F(Nesting, AllowListWithAMillionLevelsAtEveryPlaceKeepsItsGoodEntries) {
    const std::string good = R"({"mid":"M","protocol":["K"]})";
    for (const std::string& deep : {Arrays(million), Objects(million)}) {
        EXPECT_TRUE(Set(R"({"mid_list":[)" + deep + "," + good + "]}"));
        EXPECT_EQ(Fields().AllowedMids(), (AllowTable{{"K", {"M"}}}));
        EXPECT_TRUE(Set(R"({"mid_list":[{"mid":)" + deep + R"(,"protocol":["J"]},)" + good + "]}"));
        EXPECT_EQ(Fields().AllowedMids(), (AllowTable{{"K", {"M"}}}));
        EXPECT_TRUE(Set(R"({"mid_list":[{"mid":"M","protocol":["J",)" + deep + R"(]},)" + good + "]}"));
        EXPECT_EQ(Fields().AllowedMids(), (AllowTable{{"J", {"M"}}, {"K", {"M"}}}));
    }
}

TEST_F(Nesting, ActionDocumentOfAMillionLevelsIsAnsweredByItsRoot) {
    EXPECT_FALSE(SetAction(Arrays(million)));
    EXPECT_EQ(TakeRecords(), (Lines{inParseActionJson.Error("action json is empty"),
                                    inParseActionJson.Trace("type action parse ret=0")}));
    EXPECT_EQ(Fields().Actions(), ActionTable{});
    EXPECT_FALSE(SetAction(Objects(million)));
    EXPECT_EQ(TakeRecords(),
              (Lines{inParseActionJson.Error("key a format error"), inParseActionJson.Error("action json is empty"),
                     inParseActionJson.Trace("type action parse ret=0")}));
}

TEST_F(Nesting, ActionDocumentWithAMillionLevelsAsAValueKeepsItsGoodRow) {
    EXPECT_TRUE(SetAction(R"({"deep":)" + Arrays(million) + R"(,"TYPE-1":1})"));
    EXPECT_EQ(TakeRecords(), (Lines{inParseActionJson.Error("key deep format error"),
                                    inParseActionJson.Trace("type action parse ret=1")}));
    EXPECT_EQ(Fields().Actions(), (ActionTable{{"TYPE-1", true}}));
}

TEST_F(Nesting, ActionDocumentOfAMillionUnclosedLevelsLeavesTheTable) {
    for (const std::string& text : {std::string(million, '['), OpenObjects(million), Arrays(million) + "]"}) {
        EXPECT_FALSE(SetAction(text));
        EXPECT_EQ(TakeRecords(), (Lines{inParseActionJson.Error("action json is invalid json format"),
                                        inParseActionJson.Trace("type action parse ret=0")}));
        EXPECT_EQ(Fields().Actions(), oldActions);
    }
}

TEST_F(Nesting, AnswerOfAMillionArraysHoldsNoRules) {
    EXPECT_EQ(DecideBy(Arrays(million)), (Verdict{false, REPLY_BLOCK}));
    EXPECT_EQ(RecordsOfParsing(),
              Lines{inHandleEventInner.Trace("query dot result is empty, reply=0,rule guidGUID-1")});
}

TEST_F(Nesting, AnswerOfAMillionObjectsEndsTheScanAtItsFirst) {
    EXPECT_EQ(DecideBy(Objects(million)), (Verdict{false, REPLY_BLOCK}));
    EXPECT_EQ(
        RecordsOfParsing(),
        (Lines{inParseQueryResult.Trace("guid is:a"), inParseQueryResult.Error("The down_packet (value)data errror"),
               inHandleEventInner.Trace("query dot result is empty, reply=0,rule guidGUID-1")}));
}

TEST_F(Nesting, AnswerOfAMillionUnclosedLevelsCannotBeParsed) {
    for (const std::string& text : {std::string(million, '['), OpenObjects(million), Arrays(million) + "x"}) {
        EXPECT_EQ(DecideBy(text), (Verdict{false, REPLY_BLOCK}));
        EXPECT_EQ(RecordsOfParsing(), (Lines{inParseQueryResult.Error("data format error."),
                                             inHandleEvent.Trace(" query dot error, reply=0")}));
    }
}

TEST_F(Nesting, AnswerWithAMillionLevelsUnderAMachineIdDecidesAsAnyOther) {
    Fields().SetAllowedMids({{"TYPE-1", {"MID-1"}}});
    for (const std::string& deep : {Arrays(million), Objects(million)}) {
        EXPECT_EQ(DecideBy(R"({"GUID-1":{"more":)" + deep + R"(,"value":1,"mid":{"MID-1":)" + deep + "}}}"),
                  (Verdict{true, REPLY_ALLOW}));
    }
}

// The parser for few levels ends within these numbers, and the one for any number takes over.
TEST_F(Nesting, AnswerOfUpToTwentyLevelsDecidesAsAnyOther) {
    Fields().SetAllowedMids({{"TYPE-1", {"MID-1"}}});
    for (size_t levels = 0; levels <= 20; ++levels) {
        for (const std::string& deep : {levels == 0 ? "1" : Arrays(levels), Objects(levels)}) {
            EXPECT_EQ(DecideBy(R"({"GUID-0":{"more":)" + deep + R"(,"value":1,"mid":{"MID-1":1}},"GUID-1":{"more":)" +
                               deep + R"(,"value":1,"mid":{"MID-1":)" + deep + R"(,"MID-2":1}}})"),
                      (Verdict{true, REPLY_ALLOW}))
                << levels;
            EXPECT_EQ(DecideBy(R"({"GUID-1":{"value":1,"mid":{"MID-2":)" + deep + "}}}"), (Verdict{false, REPLY_BLOCK}))
                << levels;
            EXPECT_EQ(DecideBy(R"({"GUID-1":{"value":1,"mid":{"MID-1":)" + deep + "}}"), (Verdict{false, REPLY_BLOCK}))
                << levels << ", not closed";
        }
    }
}

TEST_F(Nesting, AnswerWithAMillionLevelsAsValueOrMidEndsTheScan) {
    const std::string deep = Arrays(million);
    EXPECT_EQ(DecideBy(R"({"GUID-1":{"value":)" + deep + "}}"), (Verdict{false, REPLY_BLOCK}));
    EXPECT_EQ(RecordsOfParsing().at(1), inParseQueryResult.Error("The down_packet (value)data errror"));
    EXPECT_EQ(DecideBy(R"({"GUID-1":{"value":1,"mid":)" + deep + "}}"), (Verdict{false, REPLY_BLOCK}));
    EXPECT_EQ(RecordsOfParsing().at(1), inParseQueryResult.Error("The down_packet (mid)data error"));
}

// Documents of 64 MiB. Four million levels and one long string: nesting alone would take more than the address space of
// a 32-bit process holds.
class LargeDocument : public Nesting {
protected:
    static constexpr size_t size = 64 * mebibyte;
    static constexpr size_t levels = 4 * mebibyte;

    // `begin`, a string and `levels` nested arrays, `end`: 64 MiB in all.
    static std::string Filled(const std::string& begin, const std::string& end) {
        std::string text = begin + "[\"";
        text.reserve(size + 1);
        text.append(size - text.size() - 3 - 2 * levels - end.size(), 'x');
        text += "\",";
        text.append(levels, '[').append(levels, ']');
        text += "]" + end;
        EXPECT_EQ(text.size(), size);
        return text;
    }
};

TEST_F(LargeDocument, AsAllowListIsTaken) {
    EXPECT_TRUE(Set(Filled(R"({"mid_list":[)", R"(,{"mid":"M","protocol":["K"]}]})")));
    EXPECT_EQ(Fields().AllowedMids(), (AllowTable{{"K", {"M"}}}));
    EXPECT_EQ(TakeRecords(), Lines{inSetAllowList.Trace("parse allow list, ret1")});
}

TEST_F(LargeDocument, AsAllowListIsRefusedWithCodeAndOffset) {
    std::string text = Filled("[", ",1]");
    text.back() = '}';
    EXPECT_FALSE(Set(text));
    EXPECT_EQ(TakeRecords(), Refused("error_code7error_offset67108863"));
    text = Filled("[", " ");
    EXPECT_FALSE(Set(text));
    EXPECT_EQ(TakeRecords(), Refused("error_code7error_offset67108864"));
    EXPECT_EQ(Fields().AllowedMids(), oldList);
}

TEST_F(LargeDocument, AsActionDocumentIsTaken) {
    EXPECT_TRUE(SetAction(Filled(R"({"deep":)", R"(,"TYPE-1":1})")));
    EXPECT_EQ(Fields().Actions(), (ActionTable{{"TYPE-1", true}}));
    EXPECT_EQ(TakeRecords(), (Lines{inParseActionJson.Error("key deep format error"),
                                    inParseActionJson.Trace("type action parse ret=1")}));
}

// Without records, which would hold the answer several times over.
TEST_F(LargeDocument, AsAnswerDecidesAsAnyOther) {
    LogFileEnabled = false;
    Fields().SetAllowedMids({{"TYPE-1", {"MID-1"}}});
    EXPECT_EQ(DecideBy(Filled(R"({"GUID-1":{"value":1,"mid":{"MID-1":)", "}}}")), (Verdict{true, REPLY_ALLOW}));
    EXPECT_EQ(DecideBy(Filled(R"({"GUID-1":{"value":1,"mid":{"MID-1":)", "}}]")), (Verdict{false, REPLY_BLOCK}));
}

TEST_F(LargeDocument, AsAnswerOfOneMachineIdIsKeptWhole) {
    LogFileEnabled = false;
    Fields().SetAllowedMids({{"TYPE-1", {std::string(size - 50, 'm')}}});
    const std::string answer = AnswerText("GUID-1", {std::string(size - 50, 'm')});
    EXPECT_GE(answer.size(), size - 50);
    EXPECT_EQ(DecideBy(answer), (Verdict{true, REPLY_ALLOW}));
}

} // namespace
