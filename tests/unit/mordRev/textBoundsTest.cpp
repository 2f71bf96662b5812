// The parser and the writer read no byte behind a text. Each text ends directly before memory that cannot be read.
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "kit/system/guardedText.h"
#include "mordRev/src/answerText.h"
#include "mordRev/src/json.h"
#include "mordRev/src/plainText.h"

namespace {

using kit::GuardedText;

constexpr size_t longest = 3 * sizeof(size_t);

TEST(TextBounds, SkipPlainTextReadsNothingBehindTheRange) {
    for (size_t length = 0; length <= longest; ++length) {
        const GuardedText text(std::string(length, 'a'));
        EXPECT_EQ(SkipPlainText(text.Data(), text.Data() + length), text.Data() + length);
    }
}

TEST(TextBounds, ParseInPlaceReadsNothingBehindTheNul) {
    for (size_t length = 0; length <= longest; ++length) {
        const std::string content(length, 'a');
        const std::string json = "\"" + content + "\"";
        const GuardedText text(std::string_view(json.c_str(), json.size() + 1)); // with its NUL
        JsonDocument document;
        EXPECT_FALSE(ParseJsonInPlace(document, text.Data(), json.size()).IsError()) << length;
        EXPECT_EQ(WholeText(document), content);
    }
}

TEST(TextBounds, ParseInPlaceOfAnUnterminatedStringReadsNothingBehindTheNul) {
    for (size_t length = 0; length <= longest; ++length) {
        const std::string json = "\"" + std::string(length, 'a');
        const GuardedText text(std::string_view(json.c_str(), json.size() + 1));
        JsonDocument document;
        EXPECT_TRUE(ParseJsonInPlace(document, text.Data(), json.size()).IsError()) << length;
    }
}

// Reads an answer that ends directly before memory that cannot be read, with its NUL. Returns whether it is JSON. The
// first memory for strings has `room` bytes.
bool ReadAnswer(const std::string& json, size_t room) {
    const GuardedText text(std::string_view(json.c_str(), json.size() + 1));
    std::vector<char> first(room);
    BlockMemory memory(first.data(), room);
    AnswerText stream(std::string_view(text.Data(), json.size()), memory);
    rapidjson::BaseReaderHandler<> ignored;
    return !ReadJson(stream, ignored).IsError();
}

TEST(TextBounds, TheReaderOfAnswersReadsNothingBehindTheNul) {
    for (size_t length = 0; length <= longest; ++length) {
        for (size_t room = 0; room <= 3 * longest; ++room) {
            EXPECT_TRUE(ReadAnswer("\"" + std::string(length, 'a') + "\"", room)) << length << ", " << room;
            EXPECT_TRUE(ReadAnswer("\"" + std::string(length, 'a') + "\\n\"", room)) << length << ", " << room;
        }
    }
}

TEST(TextBounds, TheReaderOfAnswersReadsNothingBehindTheNulOfAnUnterminatedString) {
    for (size_t length = 0; length <= longest; ++length) {
        for (size_t room = 0; room <= 3 * longest; ++room) {
            for (const char* const end : {"", "\\", "\\n", "\\n\\", "\\u12", "\\\\"}) {
                EXPECT_FALSE(ReadAnswer("\"" + std::string(length, 'a') + end, room)) << length << ", " << room << end;
            }
        }
    }
}

TEST(TextBounds, TheWriterReadsNothingBehindAText) {
    for (size_t length = 0; length <= longest; ++length) {
        const GuardedText text(std::string(length, 'a'));
        JsonText json;
        json.Out().Text(text.View());
        EXPECT_EQ(std::string(json.Get(), json.Size()), "\"" + std::string(length, 'a') + "\"");
    }
}

TEST(TextBounds, TheWriterReadsNothingBehindATextWithACharacterToEscape) {
    for (size_t length = 1; length <= longest; ++length) {
        const std::string plain(length - 1, 'a');
        const GuardedText text(plain + "\"");
        JsonText json;
        json.Out().Text(text.View());
        EXPECT_EQ(std::string(json.Get(), json.Size()), "\"" + plain + "\\\"\"");
    }
}

} // namespace
