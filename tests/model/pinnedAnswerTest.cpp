// The rules that the receiver reads from the answer of the host.
#include "model/pinnedCase.h"
#include "model/receiverModel.h"

namespace {

using namespace model;
using namespace std::string_literals;

class PinnedAnswer : public PinnedCase {
protected:
    // The guids with their mids that the model reads from an answer. Compares the library with the model on the same
    // answer, and keeps the records.
    std::vector<std::pair<std::string, std::vector<std::string>>> Entries(const std::string& answer,
                                                                          bool accepted = true) {
        m_case = TestCase();
        MakeRunning();
        Do(HandlingOf(EventOf(0, {RuleRecord("a", "dns")}, answer)));
        records = Records();
        std::erase_if(records,
                      [](const std::string& line) { return line.find("ParseQueryResult") == std::string::npos; });

        Trace trace;
        SiblingState siblings;
        ReceiverModel::Answer table;
        EXPECT_EQ(ReceiverModel(trace, siblings, branches).ParseQueryResult(answer, table), accepted);
        std::vector<std::pair<std::string, std::vector<std::string>>> entries;
        for (const auto& [guid, mids] : table) {
            entries.emplace_back(guid, std::vector<std::string>(mids.begin(), mids.end()));
        }
        return entries;
    }

    using Table = std::vector<std::pair<std::string, std::vector<std::string>>>;

    Lines records; // of ParseQueryResult
};

std::string Guid(const std::string& guid) {
    return TraceOf("ParseQueryResult", "guid is:" + guid);
}
std::string GotMid(const std::string& mid) {
    return TraceOf("ParseQueryResult", "get mid=" + mid);
}
const std::string badValue = ErrorOf("ParseQueryResult", "The down_packet (value)data errror");
const std::string badMid = ErrorOf("ParseQueryResult", "The down_packet (mid)data error");
const std::string zeroValue = ErrorOf("ParseQueryResult", "The down_packet error, value=0");

TEST_F(PinnedAnswer, EmptyTextAndMalformedJsonHaveDifferentErrors) {
    EXPECT_EQ(Entries("", false), Table());
    EXPECT_EQ(records, (Lines{ErrorOf("ParseQueryResult", "param error")}));
    for (const char* const text : {" ", "{", "{} {}", "{\"a\":01}"}) {
        EXPECT_EQ(Entries(text, false), Table());
        EXPECT_EQ(records, (Lines{ErrorOf("ParseQueryResult", "data format error.")}));
    }
}

TEST_F(PinnedAnswer, RootWithoutMembersIsAccepted) {
    for (const char* const text : {"{}", "[]", "[{\"a\":1}]", "1", "null", "true", "\"a\""}) {
        EXPECT_EQ(Entries(text), Table());
        EXPECT_EQ(records, Lines());
    }
}

TEST_F(PinnedAnswer, ValueZeroSkipsOneRuleAndAMissingMidEndsTheScan) {
    EXPECT_EQ(Entries(R"({"a":{"value":1,"mid":{"m":0}},"b":{"value":0,"mid":1},"c":{"mid":{"n":[]},"value":-1}})"),
              (Table{{"a", {"m"}}, {"c", {"n"}}}));
    EXPECT_EQ(records, (Lines{Guid("a"), GotMid("m"), Guid("b"), zeroValue, Guid("c"), GotMid("n")}));
    EXPECT_EQ(Entries(R"({"a":{"value":1,"mid":{"m":0}},"b":{"value":1},"c":{"mid":{},"value":1}})"),
              (Table{{"a", {"m"}}}));
    EXPECT_EQ(records, (Lines{Guid("a"), GotMid("m"), Guid("b"), badMid}));
    EXPECT_EQ(Entries(R"({"b":{"value":1,"mid":["m"]},"c":{"mid":{},"value":1}})"), Table());
    EXPECT_EQ(records, (Lines{Guid("b"), badMid}));
}

TEST_F(PinnedAnswer, ValueOtherThanA32BitIntegerEndsTheScan) {
    for (const char* const value :
         {"4294967295", "2147483648", "-2147483649", "1.5", "1.0", "1e0", "\"1\"", "true", "null", "[]", "{}"}) {
        EXPECT_EQ(Entries(std::string(R"({"a":{"value":)") + value + R"(,"mid":{}},"b":{"value":1,"mid":{}}})"),
                  Table());
        EXPECT_EQ(records, (Lines{Guid("a"), badValue})) << value;
    }
    for (const char* const rule : {"null", "true", "[]", "[1]", "1", "\"value\"", "{}", "{\"Value\":1}"}) {
        EXPECT_EQ(Entries(std::string(R"({"a":)") + rule + R"(,"b":{"value":1,"mid":{}}})"), Table());
        EXPECT_EQ(records, (Lines{Guid("a"), badValue})) << rule;
    }
    for (const char* const value : {"2147483647", "-2147483648", "-1"}) {
        EXPECT_EQ(Entries(std::string(R"({"a":{"value":)") + value + R"(,"mid":{}}})"), (Table{{"a", {}}}));
    }
    EXPECT_EQ(Entries(R"({"a":{"value":-0,"mid":{}}})"), Table());
    EXPECT_EQ(records, (Lines{Guid("a"), zeroValue}));
}

TEST_F(PinnedAnswer, FirstEntryOfAGuidIsKeptAndBothAreLogged) {
    EXPECT_EQ(Entries(R"({"a":{"value":0},"a":{"value":1,"mid":{"m":0}},"a":{"value":1,"mid":{"n":0}}})"),
              (Table{{"a", {"m"}}}));
    EXPECT_EQ(records, (Lines{Guid("a"), zeroValue, Guid("a"), GotMid("m"), Guid("a"), GotMid("n")}));
}

TEST_F(PinnedAnswer, DuplicateMidIsLoggedTwiceAndKeptOnce) {
    EXPECT_EQ(Entries(R"({"a":{"value":1,"value":0,"mid":{"n":0,"m":1,"n":2},"mid":1}})"), (Table{{"a", {"m", "n"}}}));
    EXPECT_EQ(records, (Lines{Guid("a"), GotMid("n"), GotMid("m"), GotMid("n")}));
}

TEST_F(PinnedAnswer, EmptyNamesAndNamesWithNulsAreKept) {
    EXPECT_EQ(Entries(R"({"":{"value":1,"mid":{"":0}},"a\u0000b":{"value":1,"mid":{"m\u0000n":0}}})"),
              (Table{{"", {""}}, {"a\0b"s, {"m\0n"s}}}));
    EXPECT_EQ(records, (Lines{Guid(""), GotMid(""), Guid("a"), GotMid("m")}));
}

TEST_F(PinnedAnswer, TextEndsAtItsFirstNul) {
    EXPECT_EQ(Entries("{}\0x"s), Table());
    EXPECT_EQ(Entries("{\0}"s, false), Table());
}

} // namespace
