// Documents that are handed to the shipped library: what is accepted shows in the decisions that follow.
#include "product/productDecision.h"

using namespace kit;

namespace {

class ProductDocuments : public ProductDecision {
protected:
    void SetUp() override {
        ProductDecision::SetUp();
        host.answer = AnswerText("GUID-1", {"MID-1"});
        Allow("MID-1", {"TYPE-1"});
    }

    bool Allows() { return Decide().reply == REPLY_ALLOW; }
};

TEST_F(ProductDocuments, ARefusedAllowListLeavesTheOldOne) {
    for (const char* const text : {"", " ", "{", "[]", "{}", "null", "1", R"("mid_list")", R"({"mid_list":[]}x)",
                                   R"({"mid_list":[})", "\xFF", R"({"Mid_list":[]})"}) {
        EXPECT_FALSE(receiver->SetAllowList(text)) << text;
        EXPECT_TRUE(Allows()) << text;
    }
}

TEST_F(ProductDocuments, AnAcceptedAllowListReplacesTheOldOne) {
    for (const char* const text : {R"({"mid_list":[]})", R"({"mid_list":1})", R"({"mid_list":[1,null,{},[]]})",
                                   R"({"mid_list":[{"mid":"MID-2","protocol":["TYPE-1"]}]})"}) {
        Allow("MID-1", {"TYPE-1"});
        EXPECT_TRUE(receiver->SetAllowList(text)) << text;
        EXPECT_FALSE(Allows()) << text;
    }
}

TEST_F(ProductDocuments, ClearAllowListEmptiesIt) {
    EXPECT_TRUE(receiver->ClearAllowList());
    EXPECT_FALSE(Allows());
    EXPECT_TRUE(receiver->ClearAllowList());
}

TEST_F(ProductDocuments, AMalformedActionDocumentLeavesTheTableAndOneWithoutRowsEmptiesIt) {
    receiver->ClearAllowList();
    ASSERT_TRUE(SetText(PROP_ACTION_JSON, R"({"TYPE-1":1})"));
    for (const char* const text : {"", " ", "{", R"({"TYPE-1":0}x)", R"({"TYPE-1":0,})"}) {
        EXPECT_FALSE(SetText(PROP_ACTION_JSON, text)) << text;
        EXPECT_TRUE(Allows()) << text;
    }
    for (const char* const text : {"{}", "[]", "null", "1", R"("TYPE-1")", R"({"TYPE-1":"1"})", R"({"TYPE-1":1.0})"}) {
        ASSERT_TRUE(SetText(PROP_ACTION_JSON, R"({"TYPE-1":1})"));
        EXPECT_FALSE(SetText(PROP_ACTION_JSON, text)) << text;
        EXPECT_FALSE(Allows()) << text;
    }
}

TEST_F(ProductDocuments, PropertiesAreRefusedAsTold) {
    uint32_t word = 1;
    char empty[] = "";
    EXPECT_FALSE(receiver->SetProperty(PROP_DEFENDER_MODE, nullptr, 4));
    EXPECT_FALSE(receiver->SetProperty(PROP_DEFENDER_MODE, &word, 0));
    EXPECT_FALSE(receiver->SetProperty(7, &word, 4));
    EXPECT_FALSE(receiver->SetProperty(PROP_MID, empty, 1));
    Decide();
    EXPECT_EQ(calls.Take().front(), query);
}

TEST_F(ProductDocuments, AnAnswersMachineIdsKeepANulAndThoseOfTheAllowListAreCutAtIt) {
    host.answer = AnswerText("GUID-1", {R"(MID-1\u0000x)"});
    EXPECT_FALSE(Allows());
    Allow(R"(MID-1\u0000x)", {R"(TYPE-1\u0000x)"});
    EXPECT_FALSE(Allows());
    host.answer = AnswerText("GUID-1", {"MID-1"});
    EXPECT_TRUE(Allows());
}

TEST_F(ProductDocuments, InvalidUtf8IsComparedAsItStands) {
    rules.front() = MakeRule("\xC3", "\xFF\xFE");
    host.answer = AnswerText("\xC3", {"\x80"});
    Allow("\x80", {"\xFF\xFE"});
    EXPECT_TRUE(Allows());
    EXPECT_EQ(sink.Reports().back(), (ExpectedReport{.guids = {"\xC3"}, .type = "\xFF\xFE", .block = false}.Text()));
}

TEST_F(ProductDocuments, OfAMillionLevelsAreAnswered) {
    constexpr size_t levels = 1000000;
    const std::string open(levels, '[');
    const std::string closed = open + std::string(levels, ']');
    EXPECT_FALSE(receiver->SetAllowList(open.c_str()));
    EXPECT_FALSE(receiver->SetAllowList(closed.c_str()));
    EXPECT_TRUE(Allows());
    EXPECT_FALSE(SetText(PROP_ACTION_JSON, open));
    EXPECT_FALSE(SetText(PROP_ACTION_JSON, closed));
    host.answer = R"({"GUID-1":{"value":1,"mid":{"MID-1":)" + closed + "}}}";
    EXPECT_TRUE(Allows());
    host.answer = open;
    EXPECT_FALSE(Allows());
    EXPECT_EQ(host.AnswersOut(), 0U);
}

} // namespace
