// The query request, byte for byte.
#include "unit/mordRev/decisionFixture.h"

using namespace kit;

namespace {

class QueryRequest : public DecisionFixture {
protected:
    // The request that goes out for rules with these guids.
    std::string RequestFor(const Lines& guids) {
        for (const std::string& guid : guids) {
            AddRule(guid, "TYPE-1");
        }
        host.queryCode = 1;
        Decide();
        const Lines made = TakeCalls();
        const std::string& call = made.front();
        const std::string begin = "QueryDot(";
        const std::string end = ",LOCAL-MID)";
        EXPECT_TRUE(call.starts_with(begin) && call.ends_with(end)) << call;
        return call.substr(begin.size(), call.size() - begin.size() - end.size());
    }
};

TEST_F(QueryRequest, OfOneRule) {
    EXPECT_EQ(RequestFor({"GUID-1"}), "{\n"
                                      "    \"guid\": [\n"
                                      "        \"GUID-1\"\n"
                                      "    ]\n"
                                      "}");
}

TEST_F(QueryRequest, ListsTheRulesInTheirOrder) {
    EXPECT_EQ(RequestFor({"b", "a", "c"}), "{\n"
                                           "    \"guid\": [\n"
                                           "        \"b\",\n"
                                           "        \"a\",\n"
                                           "        \"c\"\n"
                                           "    ]\n"
                                           "}");
}

TEST_F(QueryRequest, KeepsDuplicatesAndEmptyGuids) {
    EXPECT_EQ(RequestFor({"", "a", "a", ""}), "{\n"
                                              "    \"guid\": [\n"
                                              "        \"\",\n"
                                              "        \"a\",\n"
                                              "        \"a\",\n"
                                              "        \"\"\n"
                                              "    ]\n"
                                              "}");
}

TEST_F(QueryRequest, EscapesQuoteAndBackslashAndLeavesTheSlash) {
    EXPECT_EQ(RequestFor({R"(a"b\c/d)"}), RequestText({R"(a\"b\\c/d)"}));
}

TEST_F(QueryRequest, EscapesEveryControlCharacter) {
    std::string guid;
    for (char c = 1; c < 0x20; ++c) {
        guid += c;
    }
    EXPECT_EQ(RequestFor({guid}),
              RequestText({"\\u0001\\u0002\\u0003\\u0004\\u0005\\u0006\\u0007\\b\\t\\n\\u000B\\f\\r\\u000E\\u000F"
                           "\\u0010\\u0011\\u0012\\u0013\\u0014\\u0015\\u0016\\u0017\\u0018\\u0019\\u001A\\u001B"
                           "\\u001C\\u001D\\u001E\\u001F"}));
}

TEST_F(QueryRequest, LeavesEveryOtherByteAsItStands) {
    std::string guid;
    for (int c = 0x20; c < 0x100; ++c) {
        if (c != '"' && c != '\\') {
            guid += static_cast<char>(c);
        }
    }
    EXPECT_EQ(RequestFor({guid}), RequestText({guid}));
}

TEST_F(QueryRequest, LeavesInvalidUtf8AsItStands) {
    const Lines guids{"\xC3\xA4", "\xC3", "\xA4\x80", "\xF0\x9F\x98\x80", "\xED\xA0\x80", "\xFF\xFE"};
    EXPECT_EQ(RequestFor(guids), RequestText(guids));
}

TEST_F(QueryRequest, OfAThousandRulesIsWhole) {
    Lines guids;
    for (int i = 0; i < 1000; ++i) {
        guids.push_back("GUID-" + std::to_string(i) + std::string(100, 'x'));
    }
    EXPECT_EQ(RequestFor(guids), RequestText(guids));
}

} // namespace
