#include <gtest/gtest.h>

#include "unit/siblings/converterKit.h"

namespace siblingTest {

namespace {

using namespace std::string_literals;

constexpr auto cut = static_cast<int32_t>(0x8007007A);
constexpr auto invalidArgument = static_cast<int32_t>(0x80070057);

class TextConverterTest : public testing::Test {
protected:
    const SiblingLibrary library{"ZelkBase"s};
    const ServiceHolder<ITextConverter> service = library.Make<ITextConverter>(SID_TextConverter);
    ITextConverter& converter = *service.Get();
};

// One character of each length in UTF-8: 1, 2, 3 and 4 bytes.
const std::string mixedNarrow = "a\xC3\xA4\xE4\xB8\x96\xF0\x9F\x98\x80z";
const std::u16string mixedWide = u"a\u00E4\u4E16\U0001F600z";

TEST_F(TextConverterTest, convertsNarrowToWide) {
    EXPECT_EQ(WideOf(converter, mixedNarrow), mixedWide);
}

TEST_F(TextConverterTest, convertsWideToNarrow) {
    EXPECT_EQ(NarrowOf(converter, mixedWide), mixedNarrow);
}

TEST_F(TextConverterTest, convertsAnEmptyText) {
    EXPECT_EQ(ToWideText(converter, "", 1), (Converted<WideChar>{0, WIDE(""), true, true}));
    EXPECT_EQ(ToNarrowText(converter, WIDE(""), 1), (Converted<char>{0, "", true, true}));
}

TEST_F(TextConverterTest, convertsEmbeddedNuls) {
    EXPECT_EQ(WideOf(converter, "a\0b\0"s), u"a\0b\0"s);
    EXPECT_EQ(NarrowOf(converter, u"a\0b\0"s), "a\0b\0"s);
}

TEST_F(TextConverterTest, readsOnlyTheLengthOfTheSource) {
    EXPECT_EQ(WideOf(converter, std::string_view("abc").substr(0, 2)), u"ab");
    EXPECT_EQ(NarrowOf(converter, std::u16string(u"abc").substr(0, 2)), "ab");
    // The length truncates a character.
    EXPECT_EQ(WideOf(converter, std::string_view("\xE4\xB8\x96").substr(0, 2)), u"\uFFFD");
    EXPECT_EQ(NarrowOf(converter, std::u16string(u"\U0001F600").substr(0, 1)), "\xEF\xBF\xBD");
}

TEST_F(TextConverterTest, keepsAByteOrderMark) {
    EXPECT_EQ(WideOf(converter, "\xEF\xBB\xBF"), u"\uFEFF");
    EXPECT_EQ(NarrowOf(converter, u"\uFEFF"), "\xEF\xBB\xBF");
}

TEST_F(TextConverterTest, truncatesWideOutputAtACharacter) {
    const WideChar* const byRoom[] = {WIDE(""),
                                      WIDE("a"),
                                      WIDE("a\u00E4"),
                                      WIDE("a\u00E4\u4E16"),
                                      WIDE("a\u00E4\u4E16"), // half a surrogate pair
                                      WIDE("a\u00E4\u4E16\U0001F600"),
                                      WIDE("a\u00E4\u4E16\U0001F600z")};
    for (size_t room = 0; room < std::size(byRoom); ++room) {
        const int32_t result = room + 1 < std::size(byRoom) ? cut : 0;
        EXPECT_EQ(ToWideText(converter, mixedNarrow, room + 1), (Converted<WideChar>{result, byRoom[room], true, true}))
            << room;
    }
}

TEST_F(TextConverterTest, truncatesNarrowOutputAtACharacter) {
    const std::basic_string<WideChar> source(mixedWide.begin(), mixedWide.end());
    const size_t whole[] = {0, 1, 1, 3, 3, 3, 6, 6, 6, 6, 10, 11}; // bytes of whole characters that fit
    for (size_t room = 0; room < std::size(whole); ++room) {
        const int32_t result = room + 1 < std::size(whole) ? cut : 0;
        EXPECT_EQ(ToNarrowText(converter, source, room + 1),
                  (Converted<char>{result, mixedNarrow.substr(0, whole[room]), true, true}))
            << room;
    }
}

TEST_F(TextConverterTest, truncatesBeforeAReplacement) {
    const std::basic_string<WideChar> lone{WideChar{'a'}, static_cast<WideChar>(0xD800)};
    EXPECT_EQ(ToNarrowText(converter, lone, 4), (Converted<char>{cut, "a", true, true}));
    EXPECT_EQ(ToNarrowText(converter, lone, 5), (Converted<char>{0, "a\xEF\xBF\xBD", true, true}));
}

TEST_F(TextConverterTest, writesNothingWithoutCapacity) {
    EXPECT_EQ(ToWideText(converter, "abc", 0), (Converted<WideChar>{cut, WIDE(""), false, true}));
    EXPECT_EQ(ToNarrowText(converter, WIDE("abc"), 0), (Converted<char>{cut, "", false, true}));
    TextConversionRequest request{65001, 3, 0, 0, "abc", nullptr};
    EXPECT_EQ(converter.Convert(0x10101, &request), cut);
}

TEST_F(TextConverterTest, outputFitsTheBuffersOfTheComponent) {
    // 2n + 4 units for n bytes, 4n bytes for n units; plain text and units of three bytes need most.
    for (const size_t length : {1U, 2U, 1022U, 1023U, 1024U, 1025U}) {
        EXPECT_EQ(ToWideText(converter, std::string(length, 'a'), 2 * length + 4).result, 0);
        EXPECT_EQ(ToWideText(converter, std::string(length, '\xFF'), 2 * length + 4).result, 0);
        for (const int unit : {0x4E16, 0xD800, 0xDFFF}) {
            const std::basic_string<WideChar> source(length, static_cast<WideChar>(unit));
            EXPECT_EQ(ToNarrowText(converter, source, 4 * length).result, 0);
        }
    }
}

TEST_F(TextConverterTest, rejectsAnUnknownCommandAndWritesNothing) {
    for (const uint32_t command : {0U, 0x10102U, 0x10001U, 0x101U, 0xFFFFFFFFU}) {
        char destination[4] = {'x', 'x', 'x', 'x'};
        TextConversionRequest request{65001, 1, 2, 0, u"a", destination};
        EXPECT_EQ(converter.Convert(command, &request), invalidArgument);
        EXPECT_EQ(std::string(destination, 4), "xxxx");
    }
}

TEST_F(TextConverterTest, rejectsOtherCodePagesWithEmptyOutput) {
    for (const uint32_t codePage : {0U, 1252U, 65000U, 1200U}) {
        WideChar wide[4] = {'x', 'x', 'x', 'x'};
        TextConversionRequest request{codePage, 1, 4, 0, "a", wide};
        EXPECT_EQ(converter.Convert(0x10101, &request), invalidArgument);
        EXPECT_EQ(wide[0], WideChar{});
        EXPECT_EQ(wide[1], WideChar{'x'});
    }
}

TEST_F(TextConverterTest, rejectsANullRequest) {
    EXPECT_EQ(converter.Convert(0x10101, nullptr), invalidArgument);
    EXPECT_EQ(converter.Convert(0x10100, nullptr), invalidArgument);
}

TEST_F(TextConverterTest, rejectsANullDestinationWithCapacity) {
    TextConversionRequest request{65001, 1, 4, 0, "a", nullptr};
    EXPECT_EQ(converter.Convert(0x10101, &request), invalidArgument);
}

TEST_F(TextConverterTest, rejectsANullSourceWithLength) {
    char narrow[2] = {'x', 'x'};
    TextConversionRequest request{65001, 1, 2, 0, nullptr, narrow};
    EXPECT_EQ(converter.Convert(0x10100, &request), invalidArgument);
    EXPECT_EQ(narrow[0], '\0');
    EXPECT_EQ(narrow[1], 'x');
}

TEST_F(TextConverterTest, acceptsANullSourceWithoutLength) {
    char narrow[2] = {'x', 'x'};
    TextConversionRequest request{65001, 0, 2, 0, nullptr, narrow};
    EXPECT_EQ(converter.Convert(0x10100, &request), 0);
    EXPECT_EQ(narrow[0], '\0');
}

TEST_F(TextConverterTest, doesNotChangeTheRequest) {
    WideChar wide[8];
    TextConversionRequest request{65001, 3, 8, 0, "abc", wide};
    const void* const source = request.source;
    ASSERT_EQ(converter.Convert(0x10101, &request), 0);
    EXPECT_EQ(request.codePage, 65001U);
    EXPECT_EQ(request.sourceLength, 3U);
    EXPECT_EQ(request.destinationCapacity, 8U);
    EXPECT_EQ(request.source, source);
    EXPECT_EQ(request.destination, wide);
}

} // namespace

} // namespace siblingTest
