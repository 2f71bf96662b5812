// The texts of a report that are made from a path.
#include "mordRev/src/procPathText.h"

#include <cctype>

#include <gtest/gtest.h>

#include "unit/mordRev/eightBitLocale.h"

namespace {

TEST(ProcName, IsWhatStandsBehindTheLastSeparatorOfEitherKind) {
    EXPECT_EQ(ExtractProcName("c:\\dir\\client.exe"), "client.exe");
    EXPECT_EQ(ExtractProcName("/usr/bin/client"), "client");
    EXPECT_EQ(ExtractProcName("c:\\a/b.exe"), "b.exe");
    EXPECT_EQ(ExtractProcName("c:/a\\b.exe"), "b.exe");
    EXPECT_EQ(ExtractProcName("c:\\progra~1\\client~1.exe"), "client~1.exe");
    EXPECT_EQ(ExtractProcName("c:client.exe"), "c:client.exe");
}

TEST(ProcName, IsTheWholePathWithoutASeparator) {
    EXPECT_EQ(ExtractProcName("System"), "System");
}

TEST(ProcName, IsEmptyForAnEmptyPathAndBehindASeparatorAtTheEnd) {
    EXPECT_EQ(ExtractProcName(""), "");
    EXPECT_EQ(ExtractProcName("c:\\dir\\"), "");
    EXPECT_EQ(ExtractProcName("/"), "");
}

void ExpectOnlyAsciiLettersConverted() {
    const std::string capitals = "ABCDEFGHIJKLMNOPQRSTUVWXYZ";
    const std::string small = "abcdefghijklmnopqrstuvwxyz";
    for (int byte = 0; byte < 256; ++byte) {
        const auto character = static_cast<char>(byte);
        const size_t letter = capitals.find(character);
        std::string text(2, character);
        LowerCaseAscii(text);
        EXPECT_EQ(text, std::string(2, letter == std::string::npos ? character : small[letter])) << byte;
    }
}

TEST(LowerCase, ConvertsTheTwentySixLettersAndNoOtherByte) {
    ExpectOnlyAsciiLettersConverted();
}

// The locale of a host must not change the bytes of UTF-8 characters.
TEST(LowerCase, DoesNotDependOnTheLocale) {
    const EightBitLocale locale;
    ASSERT_EQ(std::tolower(0xC4), 0xE4);
    ExpectOnlyAsciiLettersConverted();
}

} // namespace
