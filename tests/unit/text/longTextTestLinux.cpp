// Texts whose conversion needs a destination beyond 32 bits are truncated to the longest one that fits: a request holds
// lengths and capacities of 32 bits. The texts are longer than 32-bit Windows can hold.
#include <algorithm>
#include <cstdint>
#include <optional>

#include <gtest/gtest.h>

#include "kit/siblings/scriptedSiblings.h"
#include "kit/system/repeatedMemoryLinux.h"
#include "text/textConvert.h"

namespace {

constexpr size_t textLength = size_t{1} << 30;

// Four times this length, and four more, is the largest such number that 32 bits hold.
constexpr uint32_t longestSource = 1073741822;

class LongText : public testing::Test {
protected:
    void SetUp() override {
        siblings.Reset();
        siblings.onConvert = [this](uint32_t, TextConversionRequest& request) {
            sourceLength = request.sourceLength;
            capacity = request.destinationCapacity;
            return std::optional(0);
        };
    }

    // A text of `textLength` characters 'a' and a NUL.
    template <typename Character>
    static const Character* Fill(kit::RepeatedMemory& memory) {
        auto* const text = static_cast<Character*>(memory.Data());
        std::fill_n(text, kit::RepeatedMemory::period / sizeof(Character), Character{'a'});
        memory.Separate(textLength * sizeof(Character));
        return text;
    }

    kit::ScriptedSiblings& siblings = kit::ScriptedSiblings::Instance();
    uint32_t sourceLength = 0;
    uint32_t capacity = 0;
};

TEST_F(LongText, NarrowTextIsTruncatedToTheLongestSource) {
    kit::RepeatedMemory memory(textLength + 1);
    EXPECT_TRUE(Utf8ToWide(Fill<char>(memory)).empty()); // the scripted converter writes nothing
    EXPECT_EQ(sourceLength, longestSource);
    EXPECT_EQ(capacity, 2 * longestSource + 4);
}

TEST_F(LongText, WideTextIsTruncatedToTheLongestSource) {
    kit::RepeatedMemory memory((textLength + 1) * sizeof(WideChar));
    EXPECT_TRUE(WideToUtf8(Fill<WideChar>(memory)).empty());
    EXPECT_EQ(sourceLength, longestSource);
    EXPECT_EQ(capacity, 4 * longestSource);
}

} // namespace
