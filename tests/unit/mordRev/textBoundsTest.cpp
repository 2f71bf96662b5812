// The parser and the writer read no byte behind a text. Each text ends directly before memory that cannot be read.
#include <string>

#include <gtest/gtest.h>

#include "kit/system/guardedText.h"
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
