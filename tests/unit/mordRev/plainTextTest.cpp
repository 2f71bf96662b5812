// The characters of a JSON string that stand for themselves: where they end is told exactly, whatever stands behind.
#include "mordRev/src/plainText.h"

#include <algorithm>
#include <random>
#include <string>

#include <gtest/gtest.h>

#include "kit/text/runSeed.h"

namespace {

constexpr size_t behind = 16; // what stands there must not be taken for a part of the text

// Where the plain part of the first `length` characters ends, one by one.
size_t PlainLength(const std::string& text, size_t length) {
    const auto isPlain = [](unsigned char c) { return c >= 0x20 && c != 0x22 && c != 0x5C; };
    return static_cast<size_t>(std::find_if_not(text.begin(), text.begin() + static_cast<ptrdiff_t>(length), isPlain) -
                               text.begin());
}

size_t Passed(const std::string& text, size_t length) {
    return static_cast<size_t>(SkipPlainText(text.data(), text.data() + length) - text.data());
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
    std::mt19937 random(static_cast<uint32_t>(kit::RunSeed()));
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

// A copy ends at the same place, has the same characters, and keeps to the room of the text.
TEST(PlainText, IsCopiedUpToItsEnd) {
    std::mt19937 random(2);
    for (int round = 0; round < 20000; ++round) {
        const size_t length = random() % 40;
        std::string text(length + behind, 'a');
        for (char& character : text) {
            character = random() % 20 == 0 ? static_cast<char>(random() % 256) : character;
        }
        std::string copy(length + behind, '-');
        const char* const end = CopyPlainText(text.data(), text.data() + length, copy.data());
        const auto copied = static_cast<size_t>(end - text.data());
        ASSERT_EQ(copied, PlainLength(text, length)) << round;
        ASSERT_EQ(copy.substr(0, copied), text.substr(0, copied)) << round;
        ASSERT_EQ(copy.substr(length), std::string(behind, '-')) << round;
    }
}

TEST(TextLength, EndsAtTheFirstNul) {
    for (size_t length = 0; length <= 3 * sizeof(size_t); ++length) {
        for (size_t most = length; most <= 4 * sizeof(size_t); ++most) {
            for (const char before : {'\x01', 'a', '\x80', '\xFF'}) {
                for (const char after : {'\0', '\x01', 'a', '\x80'}) {
                    std::string text(most + 1, after);
                    text[most] = '\0';
                    std::fill_n(text.begin(), length, before);
                    text[length] = '\0';
                    ASSERT_EQ(LengthOfText(text.data(), most), length) << most;
                }
            }
        }
    }
}

} // namespace
