#include "document/sourceExcerpt.h"

#include <gtest/gtest.h>

using namespace mordhost;

namespace {

// The excerpt at the first `token`: "TEXT|CARET|WIDTH", with "<" and ">" where the line is cut.
std::string ExcerptOf(const std::string& text, const std::string& token) {
    const SourceExcerpt excerpt = ExcerptAt(SourceText("a", text), text.find(token));
    return (excerpt.isCutBefore ? "<" : "") + excerpt.text + (excerpt.isCutAfter ? ">" : "") + '|' +
           std::to_string(excerpt.caret) + '|' + std::to_string(excerpt.caretWidth);
}

} // namespace

TEST(SourceExcerpt, IsTheLineWithItsToken) {
    EXPECT_EQ(ExcerptOf("{\n \"a\": 12,\r\n \"b\": 3}", "12"), " \"a\": 12,|6|2");
    EXPECT_EQ(ExcerptOf("{\"a\": \"x y\\\" z\" }", "\"x"), "{\"a\": \"x y\\\" z\" }|6|9");
    EXPECT_EQ(ExcerptOf("[\"a\\\\\", 1]", "\"a"), "[\"a\\\\\", 1]|1|5") << "a backslash, not an escaped quote";
    EXPECT_EQ(ExcerptOf("[[1]]", "[["), "[[1]]|0|1");
    EXPECT_EQ(ExcerptOf("{\"\": 1}", "\"\""), "{\"\": 1}|1|2");
    EXPECT_EQ(ExcerptOf("\xEF\xBB\xBF[\xC3\xA4\xC3\xA4, true]", "true"), "[\xC3\xA4\xC3\xA4, true]|5|4");
}

TEST(SourceExcerpt, OfALongLineHasTheSurroundings) {
    const std::string before(500, 'b');
    const std::string after(500, 'c');
    EXPECT_EQ(ExcerptOf(before + " 7 " + after, "7"),
              "<" + std::string(59, 'b') + " 7 " + std::string(59, 'c') + ">|60|1");
    EXPECT_EQ(ExcerptOf("7" + after, "7"), "7" + std::string(60, 'c') + ">|0|61");
}

TEST(SourceExcerpt, AtTheEndOfTheTextIsEmptyOrTheLastLine) {
    EXPECT_EQ(ExcerptOf("", "none"), "|0|1");
    EXPECT_EQ(ExcerptOf("[1", "none"), "[1|2|1");
}

TEST(SourceExcerpt, TakesIllFormedTextByteByByte) {
    const SourceExcerpt excerpt = ExcerptAt(SourceText("a", std::string(5000, '\x80') + "7"), 5000);
    EXPECT_TRUE(excerpt.isCutBefore);
    EXPECT_LE(excerpt.text.size(), 121U * 4U);
}
