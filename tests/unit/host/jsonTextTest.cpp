#include "document/jsonText.h"

#include <gtest/gtest.h>

using namespace mordhost;

TEST(JsonText, TextIsEscapedByTheRulesOfJson) {
    EXPECT_EQ(JsonText("a\"b\\c\n\x01\xC3\xA4"), "\"a\\\"b\\\\c\\n\\u0001\xC3\xA4\"");
}

TEST(JsonText, ANulInTheTextIsEscaped) {
    EXPECT_EQ(JsonText(std::string("a\0b", 3)), "\"a\\u0000b\"");
}

TEST(JsonLine, MembersStandInTheOrderOfTheirWriting) {
    JsonLine line;
    line.Text("b", "x").Number("a", -7).Truth("t", true).Truth("f", false).Null("n").Raw("r", "[1]");
    EXPECT_EQ(line.Take(), R"({"b":"x","a":-7,"t":true,"f":false,"n":null,"r":[1]})");
}

TEST(JsonLine, NoMemberMakesAnEmptyObject) {
    EXPECT_EQ(JsonLine().Take(), "{}");
}
