// AnswerText delivers the strings of a plain parse and leaves the text unchanged.
#include "mordRev/src/answerText.h"

#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "kit/text/runSeed.h"
#include "mordRev/src/json.h"

namespace {

// Collects the names of all members.
class Names : public rapidjson::BaseReaderHandler<rapidjson::UTF8<>, Names> {
public:
    bool Default() { return true; }
    bool Key(const char* text, rapidjson::SizeType length, bool) {
        names.emplace_back(text, length);
        EXPECT_EQ(text[length], '\0');
        return true;
    }

    std::vector<std::string_view> names;
};

// Whether a text is JSON, and the names in it. The first memory for strings has `room` bytes.
std::pair<bool, std::vector<std::string>> ReadNames(const std::string& text, size_t room) {
    std::vector<char> first(room);
    BlockMemory memory(first.data(), room);
    const std::string before = text;
    AnswerText stream(text, memory);
    Names names;
    const bool good = !ReadJson(stream, names).IsError();
    EXPECT_EQ(text, before);
    EXPECT_EQ(memory.Size(), 0U);
    return {good, {names.names.begin(), names.names.end()}};
}

std::pair<bool, std::vector<std::string>> ExpectedNames(const std::string& text) {
    rapidjson::Reader reader;
    rapidjson::StringStream stream(text.c_str());
    class Copies : public rapidjson::BaseReaderHandler<rapidjson::UTF8<>, Copies> {
    public:
        bool Default() { return true; }
        bool Key(const char* name, rapidjson::SizeType length, bool) {
            names.emplace_back(name, length);
            return true;
        }
        std::vector<std::string> names;
    } copies;
    const bool good =
        !reader.Parse<rapidjson::kParseDefaultFlags | rapidjson::kParseIterativeFlag>(stream, copies).IsError();
    return {good, copies.names};
}

TEST(AnswerText, DeliversTheStringsOfAPlainParse) {
    std::mt19937 random(static_cast<uint32_t>(kit::RunSeed()));
    const std::vector<std::string> pieces{
        "a",       "abcdefgh", "\\\"",    "\\\\",           "\\n", "\\u0041", "\\u0000",
        "\\u20ac", "\xC3\xA9", "0123456", "\\ud83d\\ude00", "x",   "y",       "zzzz"};
    const std::vector<std::string> faults{"\\", "\\x", "\\u12", "\\ud83d", "\x01", "\"", std::string(1, '\0')};
    size_t bad = 0;
    for (int round = 0; round < 20000; ++round) {
        std::string text = "{";
        for (size_t name = 0, names = random() % 4; name <= names; ++name) {
            text += name == 0 ? "\"" : ",\"";
            for (size_t piece = random() % 8; piece > 0; --piece) {
                text += random() % 60 == 0 ? faults[random() % faults.size()] : pieces[random() % pieces.size()];
            }
            text += "\":\"v\"";
        }
        text += random() % 30 == 0 ? "" : "}";
        const auto expected = ExpectedNames(text);
        bad += expected.first ? 0 : 1;
        ASSERT_EQ(ReadNames(text, random() % 40), expected) << text;
    }
    EXPECT_GT(bad, 1000U);
    EXPECT_LT(bad, 10000U);
}

TEST(AnswerText, DeliversStringsLargerThanABlock) {
    for (const size_t size : {65400U, 65500U, 200000U}) {
        for (const char* const escape : {"", "\\n"}) {
            const std::string text = "{\"" + std::string(size, 'm') + escape + "\":1,\"b\":1}";
            const auto expected = ExpectedNames(text);
            ASSERT_TRUE(expected.first);
            EXPECT_EQ(ReadNames(text, 100), expected);
        }
    }
}

TEST(AnswerText, WritesNothingOutOfBoundsWhenTheTextChanges) {
    std::string text = R"("0123456789\n","and more that has no room here")";
    char room[64] = {};
    BlockMemory memory(room, 13); // room for the value and its NUL only
    AnswerText stream(text, memory);
    stream.Take();
    const char* const begin = stream.PutBegin();
    for (int i = 0; i < 40; ++i) {
        stream.Put('x');
    }
    const size_t size = stream.PutEnd(begin);
    EXPECT_EQ(begin, room);
    EXPECT_EQ(std::string(begin, size), "0123456789xx" + std::string(1, '\0'));
    EXPECT_EQ(std::string(room + 13, 51), std::string(51, '\0'));
}

} // namespace
