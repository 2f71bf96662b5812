// Values of the wrong kind at every place of an allow-list document.
#include "unit/mordRev/decisionFixture.h"

using namespace kit;

namespace {

const Lines everyKind{
    "null",  "true",   "false", "0",   "1",        "-1.5", "1e300",
    R"("")", R"("x")", "[]",    "[1]", R"(["x"])", "{}",   R"({"mid":"M","protocol":["K"],"mid_list":1})"};

// `values` without those that begin with `first`: objects, arrays or strings.
Lines Without(char first, const Lines& values) {
    Lines rest;
    for (const std::string& value : values) {
        if (value.front() != first) {
            rest.push_back(value);
        }
    }
    return rest;
}

class AllowListKinds : public DecisionFixture {
protected:
    void SetUp() override {
        DecisionFixture::SetUp();
        Fields().SetAllowedMids(old);
    }

    // Sets the document and expects result, table and the records before the last one.
    void Expect(const std::string& text, bool result, const AllowTable& list, const Lines& records) {
        SCOPED_TRACE(text);
        EXPECT_EQ(receiver->SetAllowList(text.c_str()), result);
        EXPECT_EQ(Fields().AllowedMids(), list);
        EXPECT_EQ(
            TakeRecords(),
            Joined({records, {inSetAllowList.Trace(result ? "parse allow list, ret1" : "parse allow list, ret0")}}));
        Fields().SetAllowedMids(old);
    }

    const AllowTable old{{"OLD-KEY", {"OLD-MID"}}};
};

TEST_F(AllowListKinds, ARootThatIsNoObjectIsOneWithoutMidList) {
    for (const std::string& root : Without('{', everyKind)) {
        Expect(root, false, old, {inSetAllowList.Error("format error")});
    }
    Expect(R"(["mid_list",[]])", false, old, {inSetAllowList.Error("format error")});
    Expect(R"([{"mid_list":[]}])", false, old, {inSetAllowList.Error("format error")});
}

TEST_F(AllowListKinds, AMidListThatIsNoArrayEmptiesTheListAndSaysSo) {
    for (const std::string& value : Without('[', everyKind)) {
        Expect(R"({"mid_list":)" + value + "}", true, {}, {inSetAllowList.Trace("mid list is empty")});
    }
}

TEST_F(AllowListKinds, AnEntryThatIsNoObjectIsPassedOver) {
    for (const std::string& entry : Without('{', everyKind)) {
        Expect(R"({"mid_list":[)" + entry + R"(,{"mid":"M","protocol":["K"]},)" + entry + "]}", true, {{"K", {"M"}}},
               {});
    }
}

TEST_F(AllowListKinds, AnEntryWhoseMidIsNoStringIsPassedOver) {
    for (const std::string& mid : Without('"', everyKind)) {
        Expect(R"({"mid_list":[{"mid":)" + mid + R"(,"protocol":["J"]},{"mid":"M","protocol":["K"]}]})", true,
               {{"K", {"M"}}}, {});
    }
}

TEST_F(AllowListKinds, AnEntryWhoseProtocolIsNoArrayIsPassedOver) {
    for (const std::string& protocol : Without('[', everyKind)) {
        Expect(R"({"mid_list":[{"mid":"L","protocol":)" + protocol + R"(},{"mid":"M","protocol":["K"]}]})", true,
               {{"K", {"M"}}}, {});
    }
}

TEST_F(AllowListKinds, AnElementOfProtocolThatIsNoStringIsPassedOver) {
    for (const std::string& element : Without('"', everyKind)) {
        Expect(R"({"mid_list":[{"mid":"M","protocol":["J",)" + element + R"(,"K"]}]})", true,
               {{"J", {"M"}}, {"K", {"M"}}}, {});
    }
}

TEST_F(AllowListKinds, MidAndProtocolAreMatchedByteForByte) {
    for (const char* const entry : {R"({"Mid":"M","protocol":["K"]})", R"({"mid":"M","Protocol":["K"]})",
                                    R"({"mid\u0000":"M","protocol":["K"]})", R"({"mid":"M","protocol\u0000":["K"]})",
                                    R"({"mid ":"M","protocol":["K"]})", R"({"":"M","protocol":["K"]})"}) {
        Expect(std::string(R"({"mid_list":[)") + entry + "]}", true, {}, {});
    }
}

TEST_F(AllowListKinds, AWrongFirstOfTwoMembersOfOneNameCounts) {
    Expect(R"({"mid_list":[{"mid":1,"mid":"M","protocol":["K"]}]})", true, {}, {});
    Expect(R"({"mid_list":[{"mid":"M","protocol":{},"protocol":["K"]}]})", true, {}, {});
    Expect(R"({"mid_list":null,"mid_list":[{"mid":"M","protocol":["K"]}]})", true, {},
           {inSetAllowList.Trace("mid list is empty")});
}

} // namespace
