// The characters of a JSON string that stand for themselves: where they end is told exactly, whatever stands behind.
#include "mordRev/src/plainText.h"

#include <algorithm>
#include <random>
#include <string>

#include <gtest/gtest.h>

namespace {

constexpr size_t behind = 16; // what stands there must not be taken for a part of the text

// Where the plain part of the first `length` characters ends, one by one.
size_t PlainLength(const std::string& text, size_t length) {
    const auto isPlain = [](unsigned char c) { return c >= 0x20 && c != 0x22 && c != 0x5C; };
    return static_cast<size_t>(std::find_if_not(text.begin(), text.begin() + static_cast<ptrdiff_t>(length), isPlain) -
                               text.begin());
}

size_t Passed(const std::string& text, size_t length) {
    return static_cast<size_t>(PassPlainText(text.data(), text.data() + length) - text.data());
}

TEST(PlainText, EndsAtEachCharacterThatIsNoneAtEachPlace) {
    for (size_t length = 0; length <= 3 * sizeof(size_t); ++length) {
        EXPECT_EQ(Passed(std::string(length + behind, 'a'), length), length);
        for (size_t place = 0; place < length; ++place) {
            for (int byte = 0; byte < 256; ++byte) {
                std::string text(length + behind, 'a');
                text[place] = static_cast<char>(byte);
                ASSERT_EQ(Passed(text, length), PlainLength(text, length)) << byte << " at " << place;
            }
        }
    }
}

TEST(PlainText, EndsAtTheFirstOfManyThatAreNone) {
    std::mt19937 random(1);
    const std::string characters("\x00\x01\x1F\x20\x21\"\x23[\\]a\x7F\x80\x81\xA0\xA2\xDC\xFF", 18);
    for (int round = 0; round < 200000; ++round) {
        const size_t length = random() % 40;
        std::string text(length + behind, 'a');
        // Mostly plain, so that some texts are passed over whole.
        const size_t kinds = random() % 3 == 0 ? 256 : characters.size();
        for (char& character : text) {
            if (random() % 4 == 0) {
                const size_t kind = random() % kinds;
                character = kinds == 256 ? static_cast<char>(kind) : characters[kind];
            }
        }
        ASSERT_EQ(Passed(text, length), PlainLength(text, length)) << round;
    }
}

} // namespace
