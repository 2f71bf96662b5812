// ParseJson against a plain parse with the default flags: it must accept and refuse the same texts, with the same error
// codes and offsets, and deliver the same values.
#include "mordRev/src/json.h"

#include <algorithm>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "kit/text/runSeed.h"

namespace {

// Whether both hold the same, duplicate names and the order of members included, which RapidJSON's own comparison does
// not tell.
template <typename Left, typename Right>
bool Same(const Left& left, const Right& right) {
    if (left.GetType() != right.GetType()) {
        return false;
    }
    switch (left.GetType()) {
    case rapidjson::kStringType:
        return std::string_view(left.GetString(), left.GetStringLength()) ==
               std::string_view(right.GetString(), right.GetStringLength());
    case rapidjson::kNumberType:
        return left.IsInt() == right.IsInt() && left.IsUint() == right.IsUint() && left.IsInt64() == right.IsInt64() &&
               left.IsUint64() == right.IsUint64() && left.IsDouble() == right.IsDouble() &&
               (left.IsDouble() ? left.GetDouble() == right.GetDouble() : left == right);
    case rapidjson::kArrayType:
        return std::equal(left.Begin(), left.End(), right.Begin(), right.End(),
                          [](const auto& a, const auto& b) { return Same(a, b); });
    case rapidjson::kObjectType:
        return std::equal(left.MemberBegin(), left.MemberEnd(), right.MemberBegin(), right.MemberEnd(),
                          [](const auto& a, const auto& b) { return Same(a.name, b.name) && Same(a.value, b.value); });
    default:
        return true;
    }
}

// Whether both parses agree on `text`; a failure is added where they do not.
bool Agree(const std::string& text) {
    JsonDocument document;
    const rapidjson::ParseResult result = ParseJson(document, text.c_str());
    rapidjson::Document plain;
    plain.Parse(text.c_str());
    if (result.Code() != plain.GetParseError() || result.Offset() != plain.GetErrorOffset()) {
        ADD_FAILURE() << "\"" << text << "\": code " << result.Code() << " at " << result.Offset() << ", not "
                      << plain.GetParseError() << " at " << plain.GetErrorOffset();
        return false;
    }
    if (result && !Same(document, plain)) {
        ADD_FAILURE() << "\"" << text << "\": accepted with other values";
        return false;
    }
    return true;
}

// Code and offset of a text that is refused.
using Refusal = std::pair<rapidjson::ParseErrorCode, size_t>;

Refusal RefusalOf(const char* text) {
    JsonDocument document;
    const rapidjson::ParseResult result = ParseJson(document, text);
    return {result.Code(), result.Offset()};
}

// Calls `visit` with each text of `length` symbols, until it returns false.
template <typename Visit>
bool ForEachText(const std::vector<std::string>& symbols, int length, const std::string& begin, const Visit& visit) {
    if (length == 0) {
        return visit(begin);
    }
    for (const std::string& symbol : symbols) {
        if (!ForEachText(symbols, length - 1, begin + symbol, visit)) {
            return false;
        }
    }
    return true;
}

TEST(Json, AgreesOnEveryShortText) {
    const std::vector<std::string> symbols{"{", "}", "[", "]", ",",  ":",  "\"", "a",
                                           "1", "-", ".", "e", "\n", "\\", "t",  "null"};
    int count = 0;
    for (int length = 0; length <= 5; ++length) {
        ForEachText(symbols, length, "", [&count](const std::string& text) {
            ++count;
            return Agree(text);
        });
    }
    EXPECT_EQ(count, 1118481); // 1 + 16 + 16^2 + … + 16^5
}

TEST(Json, AgreesOnEveryLongerTextOfBracketsAndSeparators) {
    const std::vector<std::string> symbols{"{", "}", "[", "]", ",", ":", "\"\"", "0"};
    for (int length = 6; length <= 7; ++length) {
        EXPECT_TRUE(ForEachText(symbols, length, "", Agree));
    }
}

TEST(Json, AgreesOnRandomTexts) {
    const std::vector<std::string> symbols{
        "{",    "}",    "[",     "]",    ",",    ":",    "\"",  "\"a\"",   "\"\"",       "\"a\":",  "1",
        "-",    "0",    ".",     "e",    "E",    "+",    " ",   "\t",      "\r",         "\n",      "\f",
        "null", "true", "false", "nul",  "tru",  "\\",   "\\u", "\\u0000", "\\ud800",    "\\udc00", "\\n",
        "\\x",  "/",    "//",    "/*",   "*/",   "'",    "NaN", "Inf",     "2147483648", "1e400",   "1e-400",
        "\x01", "\x1F", "\x7F",  "\x80", "\xC3", "\xFF", "[[[", "]]]",     "{\"a\":",    "},",      "-1.5e3"};
    std::mt19937 random(static_cast<uint32_t>(kit::RunSeed()));
    std::string text;
    for (int i = 0; i < 1000000; ++i) {
        text.clear();
        for (auto symbol = 6 + random() % 20; symbol > 0; --symbol) {
            text += symbols[random() % symbols.size()];
        }
        ASSERT_TRUE(Agree(text));
    }
}

// Well-formed documents with one thing changed get far into the grammar before they fail.
TEST(Json, AgreesOnDocumentsWithOneByteChanged) {
    const std::string document =
        R"( {"mid_list":[{"mid":"M\u0041\n","protocol":["K", "\ud83d\ude00"]},[],{}, -1.5e+3],)"
        "\n"
        R"("GUID":{"value":2147483647,"mid":{"a":null,"b":true,"c":false}}, "":[[1,2],{"x":{}}] } )";
    ASSERT_TRUE(Agree(document));
    for (size_t at = 0; at < document.size(); ++at) {
        for (int byte = 0; byte < 256; ++byte) {
            std::string changed = document;
            changed[at] = static_cast<char>(byte);
            ASSERT_TRUE(Agree(changed));
        }
    }
}

TEST(Json, AgreesOnDocumentsCutAnywhereAndOnEveryTwoBytesSwapped) {
    const std::string document = R"({"mid_list":[{"mid":"M\u0041","protocol":["K",1e5,-0]},null,true,false,{},[]]} )";
    for (size_t i = 0; i < document.size(); ++i) {
        ASSERT_TRUE(Agree(document.substr(0, i)));
        ASSERT_TRUE(Agree(document.substr(i)));
        ASSERT_TRUE(Agree(document.substr(0, i) + document.substr(i + 1)));
        for (size_t j = i + 1; j < document.size(); ++j) {
            std::string swapped = document;
            std::swap(swapped[i], swapped[j]);
            ASSERT_TRUE(Agree(swapped));
        }
    }
}

TEST(Json, AgreesOnNestingAsDeepAsAPlainParseGoes) {
    for (const int depth : {1, 2, 100, 1000}) {
        const auto size = static_cast<size_t>(depth);
        const std::string open(size, '[');
        const std::string close(size, ']');
        std::string objects;
        for (int i = 0; i < depth; ++i) {
            objects += "{\"a\":";
        }
        for (const std::string& text :
             {open, open + close, open + close + "]", open + "1" + close, open + "}" + close, objects, objects + "1",
              objects + "1" + std::string(size, '}'), objects + std::string(size, '}'), objects + open + close}) {
            EXPECT_TRUE(Agree(text)) << depth;
        }
    }
}

TEST(Json, NothingButBlanksIsAnEmptyDocumentAtItsEnd) {
    EXPECT_EQ(RefusalOf(""), Refusal(rapidjson::kParseErrorDocumentEmpty, 0));
    EXPECT_EQ(RefusalOf(" \t\r\n"), Refusal(rapidjson::kParseErrorDocumentEmpty, 4));
}

TEST(Json, ATokenThatBeginsNoValueIsAnInvalidValueAndNoEmptyDocument) {
    for (const char* const text : {"]", "}", ",", ":", "x", "+", ".", "'", "/", "\xFF", "\x01"}) {
        EXPECT_EQ(RefusalOf(text), Refusal(rapidjson::kParseErrorValueInvalid, 0)) << text;
        EXPECT_EQ(RefusalOf((std::string("  ") + text).c_str()), Refusal(rapidjson::kParseErrorValueInvalid, 2))
            << text;
    }
}

TEST(Json, FindMemberGivesTheFirstOfThatNameAndNullForNoObject) {
    JsonDocument document;
    ASSERT_FALSE(ParseJson(document, R"({"a":1,"a":2,"b":null,"":3})").IsError());
    ASSERT_NE(FindMember(document, "a"), nullptr);
    EXPECT_EQ(FindMember(document, "a")->GetInt(), 1);
    ASSERT_NE(FindMember(document, ""), nullptr);
    EXPECT_EQ(FindMember(document, "")->GetInt(), 3);
    EXPECT_EQ(FindMember(document, "A"), nullptr);
    EXPECT_EQ(FindMember(document, "c"), nullptr);
    for (const char* const text : {"null", "true", "false", "1", "1.5", "\"a\"", "[]", "[\"a\",1]", "{}"}) {
        JsonDocument other;
        ASSERT_FALSE(ParseJson(other, text).IsError());
        EXPECT_EQ(FindMember(other, "a"), nullptr) << text;
    }
}

TEST(Json, MembersAreThoseOfAnObjectInDocumentOrder) {
    JsonDocument document;
    ASSERT_FALSE(ParseJson(document, R"({"b":1,"a":2,"b":3})").IsError());
    std::vector<std::string> seen;
    for (const JsonMember& member : Members(document)) {
        seen.push_back(WholeText(member.name) + std::to_string(member.value.GetInt()));
    }
    EXPECT_EQ(seen, (std::vector<std::string>{"b1", "a2", "b3"}));
    for (const char* const text : {"null", "true", "false", "1", "1.5", "\"a\"", "[]", "[\"a\",1]", "{}"}) {
        JsonDocument other;
        ASSERT_FALSE(ParseJson(other, text).IsError());
        EXPECT_TRUE(Members(other).empty()) << text;
    }
}

TEST(Json, ATextIsTakenWholeOrUpToItsFirstNul) {
    JsonDocument document;
    ASSERT_FALSE(ParseJson(document, R"("a\u0000b")").IsError());
    EXPECT_EQ(WholeText(document), std::string("a\0b", 3));
    EXPECT_EQ(TextToNul(document), "a");
}

} // namespace
