// The JSON reader of the model: fixed texts, and random texts compared with the usual parser.
#include <gtest/gtest.h>
#include <rapidjson/document.h>

#include "kit/text/runSeed.h"
#include "model/documents.h"
#include "model/jsonReader.h"
#include "model/jsonText.h"
#include "model/receiverModel.h"

namespace {

using namespace model;

TEST(JsonReader, KeepsMembersInDocumentOrderWithDuplicates) {
    const auto root = ReadJson(R"( {"b":1,"a":[true,null],"b":"x"} )");
    ASSERT_TRUE(root);
    ASSERT_EQ(root->members.size(), 3U);
    EXPECT_EQ(root->members[0].name, "b");
    EXPECT_EQ(root->members[1].name, "a");
    EXPECT_EQ(root->members[2].value.text, "x");
    EXPECT_EQ(root->Find("b")->integer, 1);
    EXPECT_EQ(root->Find("c"), nullptr);
    ASSERT_EQ(root->members[1].value.elements.size(), 2U);
    EXPECT_TRUE(root->members[1].value.elements[0].Is(JsonValue::Kind::Boolean));
    EXPECT_TRUE(root->members[1].value.elements[1].Is(JsonValue::Kind::Null));
}

TEST(JsonReader, IntegerFitsSigned32BitsWithoutFractionOrExponent) {
    const auto integer = [](const char* text) { return ReadJson(text)->integer; };
    EXPECT_EQ(integer("0"), 0);
    EXPECT_EQ(integer("-0"), 0);
    EXPECT_EQ(integer("2147483647"), INT32_MAX);
    EXPECT_EQ(integer("-2147483648"), INT32_MIN);
    for (const char* const text : {"2147483648", "-2147483649", "4294967295", "4294967296", "99999999999999999999",
                                   "1.0", "1e0", "1E2", "0.0", "-0.0", "1.5", "\"1\"", "true", "null", "[]", "{}"}) {
        EXPECT_EQ(integer(text), std::nullopt) << text;
    }
}

TEST(JsonReader, DecodesEscapes) {
    EXPECT_EQ(ReadJson(R"("\"\\\/\b\f\n\r\t\u0041\u00e9\u20AC\uD83D\ude00")")->text,
              "\"\\/\b\f\n\r\tA\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80");
    EXPECT_EQ(ReadJson(R"("a\u0000b")")->text, std::string("a\0b", 3));
    EXPECT_EQ(ReadJson(R"("\udc00")")->text, "\xED\xB0\x80");
    EXPECT_EQ(ReadJson("\"\xFF\xC3\x7F\"")->text, "\xFF\xC3\x7F");
}

TEST(JsonReader, RejectsNonStrictJson) {
    for (const char* const text : {"",           " ",         "x",           "{",           "}",
                                   "[1,]",       "[,1]",      "{\"a\":1,}",  "{a:1}",       "{1:1}",
                                   "{\"a\" 1}",  "[1 2]",     "1 2",         "{} x",        "01",
                                   "-01",        "-",         "+1",          ".5",          "1.",
                                   "1e",         "1e+",       "NaN",         "Infinity",    "-Inf",
                                   "tru",        "TRUE",      "'a'",         "\"",          "\"\\\"",
                                   "\"\\x\"",    "\"\\u00\"", "\"\\u12g4\"", "\"\\ud800\"", "\"\\ud800\\u0041\"",
                                   "\"\n\"",     "\"\x1F\"",  "//\n1",       "/**/1",       "\xEF\xBB\xBF{}",
                                   "\xC2\xA0{}", "\v1",       "1e309",       "0e309",       "-1e400"}) {
        EXPECT_FALSE(ReadJson(text)) << text;
    }
    EXPECT_FALSE(ReadJson(std::string(400, '9')));
    EXPECT_TRUE(ReadJson(std::string(300, '9')));
    EXPECT_TRUE(ReadJson("[1e308,1e-400,0.1e309]"));
    // Fraction digits raise the highest exponent as long as a double can hold them.
    EXPECT_TRUE(ReadJson("1.12345678901234567e325"));
    EXPECT_FALSE(ReadJson("1.12345678901234567e326"));
    EXPECT_FALSE(ReadJson("1.123456789012345678e326"));
    EXPECT_TRUE(ReadJson("0.00123456789012345678e327"));
    EXPECT_FALSE(ReadJson("0.00123456789012345678e328"));
    EXPECT_FALSE(ReadJson("123456789012345678.1e309"));
}

// Whether both trees have equal values of equal kinds.
bool Same(const JsonValue& ours, const rapidjson::Value& theirs) {
    const auto text = [](const rapidjson::Value& value) {
        return std::string(value.GetString(), value.GetStringLength());
    };
    switch (ours.kind) {
    case JsonValue::Kind::Null:
        return theirs.IsNull();
    case JsonValue::Kind::Boolean:
        return theirs.IsBool();
    case JsonValue::Kind::Number:
        return theirs.IsNumber() && ours.integer.has_value() == theirs.IsInt() &&
               (!ours.integer || *ours.integer == theirs.GetInt());
    case JsonValue::Kind::String:
        return theirs.IsString() && ours.text == text(theirs);
    case JsonValue::Kind::Array:
        if (!theirs.IsArray() || ours.elements.size() != theirs.Size()) {
            return false;
        }
        for (rapidjson::SizeType i = 0; i < theirs.Size(); ++i) {
            if (!Same(ours.elements[i], theirs[i])) {
                return false;
            }
        }
        return true;
    case JsonValue::Kind::Object:
        if (!theirs.IsObject() || ours.members.size() != theirs.MemberCount()) {
            return false;
        }
        for (size_t i = 0; i < ours.members.size(); ++i) {
            const auto member = theirs.MemberBegin() + static_cast<std::ptrdiff_t>(i);
            if (ours.members[i].name != text(member->name) || !Same(ours.members[i].value, member->value)) {
                return false;
            }
        }
        return true;
    }
    return false;
}

TEST(JsonReader, MatchesTheUsualParserOnRandomTexts) {
    Random random(kit::RunSeed());
    int accepted = 0;
    int refused = 0;
    for (int i = 0; i < 30000; ++i) {
        Vocabulary words(random);
        std::string text = random.Percent(30)   ? RandomAllowList(words)
                           : random.Percent(30) ? RandomAnswer(words, {"g1", "g2"})
                                                : "";
        if (text.empty()) {
            JsonText(random, text).AnyValue();
        }
        for (uint32_t faults = random.Below(3); faults > 0; --faults) {
            text = Spoiled(random, text);
        }
        text = UpToNul(text);
        rapidjson::Document document;
        document.Parse(text.c_str());
        const auto root = ReadJson(text);
        ASSERT_EQ(root.has_value(), !document.HasParseError()) << Shown(text);
        if (root) {
            ASSERT_TRUE(Same(*root, document)) << Shown(text);
        }
        ++(root ? accepted : refused);
    }
    EXPECT_GT(accepted, 5000);
    EXPECT_GT(refused, 5000);
}

} // namespace
