#include "output/boundedText.h"

#include <gtest/gtest.h>

using namespace mordhost;

TEST(BoundedText, IsAppended) {
    std::string out = "before ";
    BoundedText text(out, 5);
    text.Add("ab");
    text.Add("");
    text.Add("cde");
    EXPECT_EQ(out, "before abcde");
    EXPECT_EQ(text.Width(), 5U);
    EXPECT_FALSE(text.IsCut());
}

TEST(BoundedText, IsTruncatedWithAnEllipsis) {
    std::string out = "before ";
    BoundedText text(out, 5);
    text.Add("abc");
    text.Add("def");
    EXPECT_EQ(out, "before abcd\u2026");
    EXPECT_EQ(text.Width(), 5U);
    EXPECT_TRUE(text.IsCut());
    text.Add("g");
    EXPECT_EQ(out, "before abcd\u2026") << "and stays so";
}

TEST(BoundedText, IsTruncatedBetweenCharacters) {
    EXPECT_EQ(Printable("\u20AC\u20AC\u20AC", 3), "\u20AC\u20AC\u20AC");
    EXPECT_EQ(Printable("\u20AC\u20AC\u20AC\u00E4", 3), "\u20AC\u20AC\u2026");
    EXPECT_EQ(Printable("ab", 1), "\u2026");
}

TEST(BoundedText, IsTruncatedBetweenCharactersOfSeveralTexts) {
    const auto cut = [](const std::vector<std::string>& texts) {
        std::string out;
        BoundedText text(out, 3);
        for (const std::string& each : texts) {
            text.Add(each);
        }
        return out;
    };
    EXPECT_EQ(cut({"a\u20AC", "", "b", "c"}), "a\u20AC\u2026");
    EXPECT_EQ(cut({"ab", "\u20AC", "", "c"}), "ab\u2026");
    EXPECT_EQ(cut({"ab", "c", "", "\u20AC"}), "ab\u2026");
    EXPECT_EQ(cut({"abc", "d"}), "ab\u2026");
    EXPECT_EQ(cut({"ab", "cd"}), "ab\u2026");
    EXPECT_EQ(cut({"", "abc", ""}), "abc");
    EXPECT_EQ(cut({"\n\u20AC\n", "x"}), "?\u20AC\u2026");
}

TEST(BoundedText, ContainsNoControlCharacters) {
    EXPECT_EQ(Printable("a\x1b[31mb\nc\x7F\td"), "a?[31mb?c??d");
    EXPECT_EQ(Printable("\xC2\x9B"
                        "31m"),
              "?31m")
        << "the same in one character";
    EXPECT_EQ(Printable("\xC3\xA4\xC2\xA0\xE2\x82\xAC"), "\xC3\xA4\xC2\xA0\xE2\x82\xAC");
    EXPECT_EQ(Printable("\n\n\n\xC2\x85", 3), "??\u2026") << "a question mark is as wide as what it stands for";
}

TEST(BoundedText, WidthCountsCharacters) {
    EXPECT_EQ(WidthOf(""), 0U);
    EXPECT_EQ(WidthOf("abc"), 3U);
    EXPECT_EQ(WidthOf("\xC3\xA4\xE2\x82\xAC"), 2U);
}
