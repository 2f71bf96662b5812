#include "document/sourceText.h"

#include <gtest/gtest.h>

#include "unit/host/refusal.h"

using namespace mordhost;
using mordhostTest::RefusalOf;

namespace {

std::string At(const SourceText& source, size_t offset) {
    return source.At(offset).Text();
}

} // namespace

TEST(SourceText, BeginsAtLineOneColumnOne) {
    EXPECT_EQ(At({"a.json", "x"}, 0), "a.json:1:1");
}

TEST(SourceText, CountsLinesAndColumnsFromOne) {
    const SourceText source("a.json", "ab\ncd\n\nef");
    EXPECT_EQ(At(source, 1), "a.json:1:2");
    EXPECT_EQ(At(source, 2), "a.json:1:3"); // the line feed is part of its line
    EXPECT_EQ(At(source, 3), "a.json:2:1");
    EXPECT_EQ(At(source, 6), "a.json:3:1");
    EXPECT_EQ(At(source, 8), "a.json:4:2");
}

TEST(SourceText, CountsCharactersAndNotBytes) {
    EXPECT_EQ(At({"a.json", "\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80x"}, 9), "a.json:1:4");
}

TEST(SourceText, CountsNoColumnForAByteOrderMark) {
    EXPECT_EQ(At({"a.json", "\xEF\xBB\xBF{}"}, 3), "a.json:1:1");
}

TEST(SourceText, AnOffsetAfterTheEndIsTheEnd) {
    EXPECT_EQ(At({"a.json", "ab"}, 99), "a.json:1:3");
}

TEST(SourceText, ALineOfALongerFileKeepsItsNumber) {
    EXPECT_EQ(At({"events.jsonl", "abc", 17}, 2), "events.jsonl:17:3");
}

TEST(SourceText, ARefusalNamesThePositionAndTheReason) {
    const SourceText source("a.json", "ab\ncd");
    EXPECT_EQ(RefusalOf([&] { source.Refuse(4, "no good"); }), "a.json:2:2: no good");
}

TEST(SourceText, PositionsInALongTextAreThoseOfAPlainCount) {
    std::string text = "\xEF\xBB\xBF";
    for (int i = 0; i < 3000; ++i) {
        text += i % 7 == 0 ? "\xC3\xA4" : "ab";
        text += i % 900 == 899 ? "\n" : "";
    }
    const SourceText source("a", text);
    const auto expected = [&text](size_t offset) {
        Location place{"a", 1, 1};
        for (size_t i = 3; i < offset; ++i) {
            const bool isBreak = text[i] == '\n';
            place.line += isBreak ? 1 : 0;
            place.column = isBreak ? 1 : place.column + ((static_cast<unsigned char>(text[i]) & 0xC0U) != 0x80U);
        }
        return place.Text();
    };
    // Backwards and forwards, because positions are remembered.
    for (const size_t offset : {size_t{5000}, size_t{0}, size_t{4099}, size_t{4100}, size_t{1900}, text.size()}) {
        EXPECT_EQ(source.At(offset).Text(), expected(offset)) << offset;
    }
}
