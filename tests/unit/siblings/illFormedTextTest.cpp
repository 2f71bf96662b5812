// Each maximal subpart of an ill-formed sequence becomes U+FFFD; well-formed text is converted without loss.
#include <algorithm>
#include <random>

#include <gtest/gtest.h>

#include "kit/text/runSeed.h"
#include "unit/siblings/converterKit.h"
#include "unit/siblings/referenceUtf8.h"

namespace siblingTest {

namespace {

using namespace std::string_literals;

class IllFormedTextTest : public testing::Test {
protected:
    // For texts of at most 200 bytes. Counts the differences and reports only the first, for speed.
    void CompareWithTable(std::string_view source) {
        const std::u16string expected = EncodeUtf16(DecodeUtf8ByTable(source));
        WideChar units[201];
        TextConversionRequest request{65001, static_cast<uint32_t>(source.size()), 201, 0, source.data(), units};
        const bool same = converter.Convert(0x10101, &request) == 0 && units[expected.size()] == WideChar{} &&
                          std::equal(expected.begin(), expected.end(), units);
        if (!same && differences++ == 0) {
            EXPECT_EQ(WideOf(converter, source), expected) << testing::PrintToString(std::string(source));
        }
    }

    const SiblingLibrary library{"ZelkBase"s};
    const ServiceHolder<ITextConverter> service = library.Make<ITextConverter>(SID_TextConverter);
    ITextConverter& converter = *service.Get();
    int differences = 0;
};

// The text of `count` replacement characters.
std::u16string Replaced(size_t count) {
    return std::u16string(count, u'\uFFFD');
}

TEST_F(IllFormedTextTest, replacesEachByteOfOverlongForms) {
    EXPECT_EQ(WideOf(converter, "\xC0\xAF\xE0\x80\xBF\xF0\x81\x82\x41"), Replaced(8) + u"A");
    EXPECT_EQ(WideOf(converter, "\xC0\x80"), Replaced(2)) << "overlong NUL";
}

TEST_F(IllFormedTextTest, replacesEachByteOfSurrogatesInUtf8) {
    EXPECT_EQ(WideOf(converter, "\xED\xA0\x80\xED\xBF\xBF\xED\xAF\x41"), Replaced(8) + u"A");
    EXPECT_EQ(WideOf(converter, "\xED\xA0\xBD\xED\xB8\x80"), Replaced(6)) << "a pair in UTF-8";
}

TEST_F(IllFormedTextTest, replacesEachByteOfValuesAboveTheLastCodePoint) {
    EXPECT_EQ(WideOf(converter, "\xF4\x91\x92\x93\xFF\x41\x80\xBF\x42"), Replaced(5) + u"A" + Replaced(2) + u"B");
    EXPECT_EQ(WideOf(converter, "\xF5\x80\x80\x80\xF8\x88\x80\x80\x80"), Replaced(9));
}

TEST_F(IllFormedTextTest, replacesATruncatedSequenceOnce) {
    EXPECT_EQ(WideOf(converter, "\xE1\x80\xE2\xF0\x91\x92\xF1\xBF\x41"), Replaced(4) + u"A");
    EXPECT_EQ(WideOf(converter, "\xE4\xB8"), Replaced(1));
    EXPECT_EQ(WideOf(converter, "\xF0\x9F\x98"), Replaced(1));
    EXPECT_EQ(WideOf(converter, "\xC3"), Replaced(1));
}

TEST_F(IllFormedTextTest, aNulEndsASequence) {
    EXPECT_EQ(WideOf(converter, "\xE4\xB8\0x"s), Replaced(1) + u"\0x"s);
}

TEST_F(IllFormedTextTest, replacesEachLoneTrailingByte) {
    EXPECT_EQ(WideOf(converter, "\x80\xBF"), Replaced(2));
}

TEST_F(IllFormedTextTest, replacesEachLoneSurrogateInUtf16) {
    const std::string one = "\xEF\xBF\xBD";
    const std::string pair = "\xF0\x9F\x98\x80";
    EXPECT_EQ(NarrowOf(converter, {0xD800}), one);
    EXPECT_EQ(NarrowOf(converter, {0xDFFF}), one);
    EXPECT_EQ(NarrowOf(converter, {0xDC00, 0xD800}), one + one) << "reversed";
    EXPECT_EQ(NarrowOf(converter, {0xD800, 0xD83D, 0xDE00}), one + pair);
    EXPECT_EQ(NarrowOf(converter, {0xD83D, 0xDE00, 0xDE00}), pair + one);
    EXPECT_EQ(NarrowOf(converter, {0xD83D, u'a'}), one + "a");
    EXPECT_EQ(NarrowOf(converter, {0xD83D, 0x0000}), one + "\0"s);
}

TEST_F(IllFormedTextTest, everySequenceOfOneOrTwoBytesMatchesTheTable) {
    for (int first = 0; first < 256; ++first) {
        CompareWithTable(std::string(1, static_cast<char>(first)));
        for (int second = 0; second < 256; ++second) {
            const char bytes[] = {static_cast<char>(first), static_cast<char>(second)};
            CompareWithTable({bytes, 2});
        }
    }
    EXPECT_EQ(differences, 0);
}

// Sixteen parts, for parallel runs.
class EveryThreeBytesTest : public IllFormedTextTest, public testing::WithParamInterface<int> {};

INSTANTIATE_TEST_SUITE_P(FirstByteFrom, EveryThreeBytesTest, testing::Range(0, 256, 16));

TEST_P(EveryThreeBytesTest, matchTheTable) {
    for (int sequence = GetParam() << 16; sequence < (GetParam() + 16) << 16; ++sequence) {
        const char bytes[] = {static_cast<char>(sequence >> 16), static_cast<char>(sequence >> 8),
                              static_cast<char>(sequence)};
        CompareWithTable({bytes, 3});
    }
    EXPECT_EQ(differences, 0);
}

// The bounds of every range of the table, and their neighbours.
constexpr unsigned char bounds[] = {0x00, 0x41, 0x7F, 0x80, 0x8F, 0x90, 0x9F, 0xA0, 0xBF, 0xC0, 0xC1, 0xC2, 0xDF,
                                    0xE0, 0xE1, 0xEC, 0xED, 0xEE, 0xEF, 0xF0, 0xF1, 0xF3, 0xF4, 0xF5, 0xFF};

TEST_F(IllFormedTextTest, sequencesOfFourBytesAtTheBoundsMatchTheTable) {
    for (const unsigned char first : bounds) {
        for (const unsigned char second : bounds) {
            for (const unsigned char third : bounds) {
                for (const unsigned char fourth : bounds) {
                    const char bytes[] = {static_cast<char>(first), static_cast<char>(second), static_cast<char>(third),
                                          static_cast<char>(fourth)};
                    CompareWithTable({bytes, 4});
                }
            }
        }
    }
    EXPECT_EQ(differences, 0);
}

TEST_F(IllFormedTextTest, longRandomTextsMatchTheTable) {
    std::mt19937 random(static_cast<uint32_t>(kit::RunSeed()));
    for (int round = 0; round < 2000; ++round) {
        std::string text(random() % 200, '\0');
        for (char& byte : text) {
            byte = static_cast<char>(random() % 2 == 0 ? bounds[random() % std::size(bounds)] : random());
        }
        CompareWithTable(text);
    }
    EXPECT_EQ(differences, 0);
}

TEST_F(IllFormedTextTest, everyCodePointConvertsInBothDirections) {
    for (char32_t point = 0; point <= 0x10FFFF; ++point) {
        if (point >= 0xD800 && point <= 0xDFFF) {
            continue;
        }
        const std::u32string one(1, point);
        const std::string narrow = EncodeUtf8(one);
        const std::u16string wide = EncodeUtf16(one);
        if (WideOf(converter, narrow) != wide || NarrowOf(converter, wide) != narrow) {
            ADD_FAILURE() << "U+" << std::hex << static_cast<uint32_t>(point);
            return;
        }
    }
}

TEST_F(IllFormedTextTest, everyUnitBeforeTheBoundsOfTheSurrogatesIsPairedOrReplaced) {
    constexpr char16_t beside[] = {0x0041, 0xD7FF, 0xD800, 0xDBFF, 0xDC00, 0xDFFF, 0xE000};
    const auto isHigh = [](char32_t unit) { return unit >= 0xD800 && unit <= 0xDBFF; };
    const auto isLow = [](char32_t unit) { return unit >= 0xDC00 && unit <= 0xDFFF; };
    const auto alone = [&](char32_t unit) { return isHigh(unit) || isLow(unit) ? U'\uFFFD' : unit; };
    for (char32_t unit = 0; unit <= 0xFFFF; ++unit) {
        for (const char16_t next : beside) {
            const std::u32string expected = isHigh(unit) && isLow(next)
                                                ? std::u32string(1, (unit - 0xD800) * 0x400 + (next - 0xDC00) + 0x10000)
                                                : std::u32string{alone(unit), alone(next)};
            ASSERT_EQ(NarrowOf(converter, {static_cast<char16_t>(unit), next}), EncodeUtf8(expected))
                << std::hex << static_cast<uint32_t>(unit) << ' ' << static_cast<uint32_t>(next);
        }
    }
}

} // namespace

} // namespace siblingTest
