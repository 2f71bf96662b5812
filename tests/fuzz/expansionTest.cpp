// The repetitions of an input, and the scale that kept inputs reach by them.
#include <algorithm>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "fuzz/corpus.h"
#include "fuzz/expansion.h"
#include "fuzz/input.h"

namespace {

using namespace std::string_view_literals;

std::string Expanded(std::string_view input, bool atFullScale) {
    return Expand(reinterpret_cast<const uint8_t*>(input.data()), input.size(), atFullScale);
}

// The text of a kept input at the scale at which the targets run it.
std::string TextOf(const char* target, const char* name) {
    for (const auto& file : CorpusFiles(target)) {
        if (file.filename() == name) {
            const InputBytes input = ReadInput(file);
            return Expand(input.data(), input.size(), IsOneIn(scaleOneIn, input.data(), input.size()));
        }
    }
    ADD_FAILURE() << target << " has no kept input " << name;
    return "";
}

TEST(Expansion, CopiesWhatIsNoRepetition) {
    EXPECT_EQ(Expanded("a\x1E\0b"sv, true), "a\x1E\0b"sv);
    EXPECT_EQ(Expanded("", true), "");
}

TEST(Expansion, RepeatsABodyWithTheNumberOfEachCopy) {
    EXPECT_EQ(Expanded("<\x1D\x03\x02,\x1E>", false), "<,0,1,2>");
    EXPECT_EQ(Expanded("\x1D\x02\x01\x1E", true), "0123456789101112131415");
}

TEST(Expansion, RepeatsABodyFewerThanEightTimesBelowFullScale) {
    EXPECT_EQ(Expanded("\x1D\xFF\x01x", false), "xxxxxxx");
    EXPECT_EQ(Expanded("\x1D\xFF\x01x", true), std::string(2040, 'x'));
}

TEST(Expansion, IgnoresARepetitionInABody) {
    EXPECT_EQ(Expanded("\x1D\x01\x04\x1D\x02\x01y", false), "\x1D\x02\x01y");
}

TEST(Expansion, TakesAsMuchOfABodyAsThereIs) {
    EXPECT_EQ(Expanded("\x1D\x02\x09xy", false), "xyxy");
    EXPECT_EQ(Expanded("\x1D\x02", false), "");
    EXPECT_EQ(Expanded("\x1D", false), "");
}

TEST(Expansion, EndsAtItsLimit) {
    std::string input;
    for (int i = 0; i < 3; ++i) {
        input += "\x1D\xFF\xFF" + std::string(255, 'x');
    }
    EXPECT_GE(Expanded(input, true).size(), mostExpanded);
    EXPECT_LT(Expanded(input, true).size(), mostExpanded + 255);
}

TEST(KeptScale, HasAnswersAbove64KiB) {
    EXPECT_GT(TextOf("queryResult", "answerAbove64KiB").find('\0'), 65536U);
    EXPECT_GT(TextOf("queryResult", "answerAbove64KiBWithEvent").find('\0'), 65536U);
    EXPECT_GT(TextOf("hostAnswers", "answerAbove64KiB").size(), 65536U);
}

TEST(KeptScale, HasFourAllowListsOf600Ids) {
    const std::string text = TextOf("allowList", "fourListsOf600");
    for (const char list : "abcd"sv) {
        EXPECT_NE(text.find(std::string("\"") + list + "599\""), text.npos) << list;
    }
}

TEST(KeptScale, HasSevenAllowListsOf1000Pairs) {
    const std::string text = TextOf("allowList", "seven1000PairLists");
    for (const char list : "abcdefg"sv) {
        EXPECT_NE(text.find(std::string("\"") + list + "999\""), text.npos) << list;
    }
}

} // namespace
