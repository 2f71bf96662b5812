#include "document/jsonNode.h"

#include <gtest/gtest.h>

#include "unit/host/refusal.h"

using namespace mordhost;
using mordhostTest::RefusalOf;

namespace {

JsonNode Parse(const std::string& text) {
    return ParseJson(SourceText("a.json", text));
}

std::string Refusal(const std::string& text) {
    return RefusalOf([&] { Parse(text); });
}

std::string Slice(const std::string& text, const JsonNode& node) {
    return text.substr(node.begin, node.end - node.begin);
}

} // namespace

TEST(JsonNode, EachKindKeepsItsValue) {
    const JsonNode root = Parse(R"([null, true, false, -12.50e1, "a\u00e4\n", [], {}])");
    ASSERT_EQ(root.kind, JsonNode::Kind::array);
    ASSERT_EQ(root.elements.size(), 7U);
    EXPECT_EQ(root.elements[0].kind, JsonNode::Kind::null);
    EXPECT_EQ(root.elements[1].kind, JsonNode::Kind::boolean);
    EXPECT_TRUE(root.elements[1].truth);
    EXPECT_FALSE(root.elements[2].truth);
    EXPECT_EQ(root.elements[3].kind, JsonNode::Kind::number);
    EXPECT_EQ(root.elements[3].text, "-12.50e1") << "a number is kept as it is spelt";
    EXPECT_EQ(root.elements[4].kind, JsonNode::Kind::string);
    EXPECT_EQ(root.elements[4].text, "a\xC3\xA4\n");
    EXPECT_EQ(root.elements[5].kind, JsonNode::Kind::array);
    EXPECT_EQ(root.elements[6].kind, JsonNode::Kind::object);
}

TEST(JsonNode, EachValueKnowsItsPosition) {
    const std::string text = " { \"a,:\" : [ 1 , {\"b\":\"x, y: z\"} ,true ], \"c\" :\n  null }  ";
    const JsonNode root = Parse(text);
    EXPECT_EQ(Slice(text, root), text.substr(1, text.size() - 3));
    ASSERT_EQ(root.members.size(), 2U);
    EXPECT_EQ(root.members[0].name, "a,:");
    EXPECT_EQ(text.substr(root.members[0].begin, 5), "\"a,:\"");
    const JsonNode& list = root.members[0].value;
    EXPECT_EQ(Slice(text, list), "[ 1 , {\"b\":\"x, y: z\"} ,true ]");
    ASSERT_EQ(list.elements.size(), 3U);
    EXPECT_EQ(Slice(text, list.elements[0]), "1");
    EXPECT_EQ(Slice(text, list.elements[1]), "{\"b\":\"x, y: z\"}");
    ASSERT_EQ(list.elements[1].members.size(), 1U);
    EXPECT_EQ(Slice(text, list.elements[1].members[0].value), "\"x, y: z\"");
    EXPECT_EQ(Slice(text, list.elements[2]), "true");
    EXPECT_EQ(text.substr(root.members[1].begin, 3), "\"c\"");
    EXPECT_EQ(Slice(text, root.members[1].value), "null");
}

TEST(JsonNode, PositionsAfterEscapedTextAreThoseOfTheSource) {
    const std::string text = R"(["\u0041\"\\", 7])";
    const JsonNode root = Parse(text);
    EXPECT_EQ(Slice(text, root.elements[0]), R"("\u0041\"\\")");
    EXPECT_EQ(Slice(text, root.elements[1]), "7");
}

TEST(JsonNode, ARootOfAnyKindIsAValue) {
    EXPECT_EQ(Parse(" 12 ").text, "12");
    EXPECT_EQ(Slice(" 12 ", Parse(" 12 ")), "12");
    EXPECT_EQ(Parse("\"x\"").text, "x");
}

TEST(JsonNode, AHugeNumberKeepsItsSpelling) {
    EXPECT_EQ(Parse("123456789012345678901234567890").text, "123456789012345678901234567890");
}

TEST(JsonNode, MembersKeepTheirOrderAndTheirRepetitions) {
    const JsonNode root = Parse(R"({"b":1,"a":2,"b":3})");
    ASSERT_EQ(root.members.size(), 3U);
    EXPECT_EQ(root.members[0].name, "b");
    EXPECT_EQ(root.members[2].name, "b");
    EXPECT_EQ(root.members[2].value.text, "3");
}

TEST(JsonNode, AByteOrderMarkIsSkipped) {
    const std::string text = "\xEF\xBB\xBF{\"a\": x}";
    EXPECT_EQ(Refusal(text), "a.json:1:7: Invalid value.");
    EXPECT_EQ(Slice("\xEF\xBB\xBF[1]", Parse("\xEF\xBB\xBF[1]")), "[1]");
}

TEST(JsonNode, ASyntaxErrorIsRefusedWithItsPosition) {
    EXPECT_EQ(Refusal("{\n  \"a\": 1\n  \"b\": 2\n}"), "a.json:3:3: Missing a comma or '}' after an object member.");
    EXPECT_EQ(Refusal(""), "a.json:1:1: The document is empty.");
    EXPECT_EQ(Refusal("[1,]"), "a.json:1:4: Invalid value.");
    EXPECT_EQ(Refusal("{} x"), "a.json:1:4: The document root must not be followed by other values.");
}

TEST(JsonNode, InvalidUtf8IsRefused) {
    EXPECT_EQ(Refusal("[\"a\xFF\"]"), "a.json:1:4: the string is not UTF-8: save the file as UTF-8");
}

TEST(JsonNode, ARawNulIsRefused) {
    const std::string reason = "the text contains a NUL byte: the file is not a text, or it is damaged";
    EXPECT_EQ(Refusal(std::string("[1]\0[2]", 7)), "a.json:1:4: " + reason);
    EXPECT_EQ(Refusal(std::string("[1, \0]", 6)), "a.json:1:5: " + reason);
    EXPECT_EQ(Refusal(std::string("[\"a\0\"]", 6)), "a.json:1:4: " + reason);
    EXPECT_EQ(Refusal(std::string(4096, '\0')), "a.json:1:1: " + reason) << "as a file that was never written";
    EXPECT_EQ(Refusal(std::string("\xEF\xBB\xBF\0", 4)), "a.json:1:1: " + reason);
}

TEST(JsonNode, AnotherEncodingIsRefusedWithItsName) {
    const auto wide = [](const std::string& text, const std::string& before, const std::string& behind) {
        std::string bytes;
        for (const char c : text) {
            bytes += before + c + behind;
        }
        return bytes;
    };
    const std::string zero(1, '\0');
    const std::string zeros(3, '\0');
    const std::string utf16 = "a.json:1:1: the text is UTF-16, and JSON is UTF-8: save the file as UTF-8";
    const std::string utf32 = "a.json:1:1: the text is UTF-32, and JSON is UTF-8: save the file as UTF-8";
    EXPECT_EQ(Refusal("\xFF\xFE" + wide("{}", "", zero)), utf16);
    EXPECT_EQ(Refusal("\xFE\xFF" + wide("{}", zero, "")), utf16);
    EXPECT_EQ(Refusal(wide("{}", "", zero)), utf16);
    EXPECT_EQ(Refusal(wide("{}", zero, "")), utf16);
    EXPECT_EQ(Refusal("\xFF\xFE" + std::string(2, '\0') + wide("{}", "", zeros)), utf32);
    EXPECT_EQ(Refusal(std::string(2, '\0') + "\xFE\xFF" + wide("{}", zeros, "")), utf32);
    EXPECT_EQ(Refusal("{}"), "accepted");
}

TEST(JsonNode, NestingIsBounded) {
    const auto nested = [](size_t depth) { return std::string(depth, '[') + std::string(depth, ']'); };
    EXPECT_EQ(Refusal(nested(64)), "accepted");
    EXPECT_EQ(Refusal(nested(65)), "a.json:1:65: values are nested more than 64 deep");
    EXPECT_EQ(Refusal(std::string(1000000, '[')), "a.json:1:65: values are nested more than 64 deep");
}
