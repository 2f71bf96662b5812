// The rules by which an ini file's integers are read: the same table on the system that makes the rules and on the one
// that follows them.
#include <filesystem>
#include <fstream>
#include <string>

#include <gtest/gtest.h>

#include "platform/platform.h"

namespace {

class ProfileInteger : public testing::Test {
protected:
    void SetUp() override {
        const auto* const info = testing::UnitTest::GetInstance()->current_test_info();
        m_path = std::filesystem::temp_directory_path() / (std::string("mordRevProfile") + info->name() + ".ini");
    }
    void TearDown() override { std::filesystem::remove(m_path); }

    void Write(const std::string& bytes) {
        std::ofstream(m_path, std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    }

    uint32_t Read(const WideChar* section = WIDE("OUTLOG"), const WideChar* key = WIDE("WriteLog")) {
        const std::u16string path = m_path.u16string();
        return platform::GetPrivateProfileIntW(section, key, 7,
                                               std::basic_string<WideChar>(path.begin(), path.end()).c_str());
    }

    uint32_t ReadValue(const std::string& value) {
        Write("[OUTLOG]\r\nWriteLog=" + value + "\r\n");
        return Read();
    }

    std::filesystem::path m_path;
};

TEST_F(ProfileInteger, MissingFileGivesTheDefault) {
    EXPECT_EQ(Read(), 7U);
}

TEST_F(ProfileInteger, MissingSectionGivesTheDefault) {
    Write("[OTHER]\r\nWriteLog=1\r\n");
    EXPECT_EQ(Read(), 7U);
}

TEST_F(ProfileInteger, MissingKeyGivesTheDefault) {
    Write("[OUTLOG]\r\nDebugView=1\r\n");
    EXPECT_EQ(Read(), 7U);
}

TEST_F(ProfileInteger, EmptyValueGivesTheDefault) {
    EXPECT_EQ(ReadValue(""), 7U);
}

TEST_F(ProfileInteger, DecimalDigitsGiveTheirValue) {
    EXPECT_EQ(ReadValue("0"), 0U);
    EXPECT_EQ(ReadValue("1"), 1U);
    EXPECT_EQ(ReadValue("007"), 7U);
    EXPECT_EQ(ReadValue("4294967295"), 4294967295U);
}

TEST_F(ProfileInteger, WhatFollowsTheDigitsIsIgnored) {
    EXPECT_EQ(ReadValue("12abc"), 12U);
    EXPECT_EQ(ReadValue("3 ; why"), 3U);
    EXPECT_EQ(ReadValue("1.9"), 1U);
}

TEST_F(ProfileInteger, TextIsZero) {
    EXPECT_EQ(ReadValue("yes"), 0U);
    EXPECT_EQ(ReadValue("true"), 0U);
    EXPECT_EQ(ReadValue("x1"), 0U);
}

TEST_F(ProfileInteger, PrefixTellsAnotherBase) {
    EXPECT_EQ(ReadValue("0x1F"), 31U);
    EXPECT_EQ(ReadValue("-0x10"), 4294967280U);
    EXPECT_EQ(ReadValue("0b101"), 5U);
    EXPECT_EQ(ReadValue("0o17"), 15U);
    EXPECT_EQ(ReadValue("0x"), 0U);
    EXPECT_EQ(ReadValue("0X1"), 0U); // the prefix in small letters only
    EXPECT_EQ(ReadValue("0b2"), 0U);
}

TEST_F(ProfileInteger, ANumberThatIsTooLargeWrapsAround) {
    EXPECT_EQ(ReadValue("4294967297"), 1U);
}

TEST_F(ProfileInteger, SignIsTaken) {
    EXPECT_EQ(ReadValue("-1"), 4294967295U);
    EXPECT_EQ(ReadValue("+5"), 5U);
}

TEST_F(ProfileInteger, BlanksAroundNameAndValueDoNotCount) {
    Write("[OUTLOG]\r\n   WriteLog \t =  \t 9  \r\n");
    EXPECT_EQ(Read(), 9U);
}

TEST_F(ProfileInteger, QuotesAroundTheValueDoNotCount) {
    EXPECT_EQ(ReadValue("\"5\""), 5U);
    EXPECT_EQ(ReadValue("'6'"), 6U);
}

TEST_F(ProfileInteger, BlanksAndControlCharactersBeforeTheNumberDoNotCountBehindAQuoteEither) {
    EXPECT_EQ(ReadValue("\" 1\""), 1U);
    EXPECT_EQ(ReadValue("' \t 2'"), 2U);
    EXPECT_EQ(ReadValue("\" -1\""), 4294967295U);
    EXPECT_EQ(ReadValue("\"  0x10\""), 16U);
    EXPECT_EQ(ReadValue("\"\x01\x1F\" 3"), 0U); // it is no quoted value then
    EXPECT_EQ(ReadValue("\"\x01\x1F 3\""), 3U);
    EXPECT_EQ(ReadValue("\x01\x1F"
                        "4"),
              4U);
    EXPECT_EQ(ReadValue("\"\x7F"
                        "5\""),
              0U);
    EXPECT_EQ(ReadValue("\"\xC2\xA0"
                        "6\""),
              0U); // no blank of another alphabet
}

TEST_F(ProfileInteger, BlanksBehindASignOrAPrefixEndTheNumber) {
    EXPECT_EQ(ReadValue("- 1"), 0U);
    EXPECT_EQ(ReadValue("\"+ 1\""), 0U);
    EXPECT_EQ(ReadValue("0x 1"), 0U);
    EXPECT_EQ(ReadValue("+-1"), 0U);
}

TEST_F(ProfileInteger, AQuotedBlankIsZeroAndAnEmptyPairOfQuotesGivesTheDefault) {
    EXPECT_EQ(ReadValue("\" \""), 0U);
    EXPECT_EQ(ReadValue("\"\""), 7U);
    EXPECT_EQ(ReadValue("\"5"), 0U);
    EXPECT_EQ(ReadValue("5\""), 5U);
}

TEST_F(ProfileInteger, AKeyWithoutAnEqualSignHasNoValueAndHidesTheNext) {
    Write("[OUTLOG]\r\nWriteLog\r\nWriteLog=4\r\n");
    EXPECT_EQ(Read(), 7U);
}

TEST_F(ProfileInteger, LinesMayEndInACarriageReturnAlone) {
    Write("[OUTLOG]\rDebugView=0\rWriteLog=8\r");
    EXPECT_EQ(Read(), 8U);
    EXPECT_EQ(ReadValue("\"\r5\""), 0U); // within quotes too
}

TEST_F(ProfileInteger, TheOldEndOfFileCharacterCountsAsABlank) {
    Write("[OUTLOG]\n\x1AWriteLog=4\n");
    EXPECT_EQ(Read(), 4U);
}

TEST_F(ProfileInteger, NamesAreFoundInAnyCase) {
    Write("[outLog]\r\nWRITELOG=4\r\n");
    EXPECT_EQ(Read(), 4U);
}

TEST_F(ProfileInteger, CommentLinesAreNoKeys) {
    Write("[OUTLOG]\r\n;WriteLog=1\r\nWriteLog=2\r\n");
    EXPECT_EQ(Read(), 2U);
}

TEST_F(ProfileInteger, TheFirstOfTwoKeysCounts) {
    Write("[OUTLOG]\r\nWriteLog=1\r\nWriteLog=2\r\n");
    EXPECT_EQ(Read(), 1U);
}

TEST_F(ProfileInteger, ASecondSectionOfTheNameIsNotLookedAt) {
    Write("[OUTLOG]\r\nDebugView=1\r\n[OTHER]\r\nA=1\r\n[OUTLOG]\r\nWriteLog=3\r\n");
    EXPECT_EQ(Read(), 7U);
}

TEST_F(ProfileInteger, LinesMayEndInALineFeedAlone) {
    Write("[OUTLOG]\nDebugView=0\nWriteLog=8\n");
    EXPECT_EQ(Read(), 8U);
}

TEST_F(ProfileInteger, TheLastLineNeedsNoEnd) {
    Write("[OUTLOG]\r\nWriteLog=8");
    EXPECT_EQ(Read(), 8U);
}

TEST_F(ProfileInteger, WideFileWithAByteOrderMarkIsRead) {
    std::string bytes = "\xFF\xFE";
    for (const char c : std::string("[OUTLOG]\r\nWriteLog=6\r\n")) {
        bytes += c;
        bytes += '\0';
    }
    Write(bytes);
    EXPECT_EQ(Read(), 6U);
}

TEST_F(ProfileInteger, EachAsciiLetterOfANameIsComparedWithoutRegardToCase) {
    Write("[abcdefghijklmNOPQRSTUVWXYZ]\r\nABCDEFGHIJKLMnopqrstuvwxyz=5\r\n");
    EXPECT_EQ(Read(WIDE("ABCDEFGHIJKLMnopqrstuvwxyz"), WIDE("abcdefghijklmNOPQRSTUVWXYZ")), 5U);
}

TEST_F(ProfileInteger, EachHexadecimalDigitHasItsValue) {
    EXPECT_EQ(ReadValue("0x1234567"), 0x1234567U);
    EXPECT_EQ(ReadValue("0x89abcdef"), 0x89ABCDEFU);
    EXPECT_EQ(ReadValue("0x89ABCDEF"), 0x89ABCDEFU);
}

TEST_F(ProfileInteger, BlanksAroundTheNameOfASectionDoNotCount) {
    Write("[ \tOUTLOG \t]\r\nWriteLog=5\r\n");
    EXPECT_EQ(Read(), 5U);
}

TEST_F(ProfileInteger, OtherCharactersAroundANameCount) {
    Write("[~OUTLOG]\r\nWriteLog=5\r\n[OUTLOG~]\r\nWriteLog=5\r\n");
    EXPECT_EQ(Read(), 7U);
    Write("[OUTLOG]\r\n~WriteLog=5\r\nWriteLog~=5\r\n");
    EXPECT_EQ(Read(), 7U);
}

} // namespace
