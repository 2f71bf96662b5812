#include "native/devicePath.h"

#include <stdexcept>

#include <gtest/gtest.h>

#include "kit/system/scriptedProcess/internals.h"

namespace {

using namespace scripted;

class DevicePath : public testing::Test {
protected:
    void SetUp() override {
        Reset();
        system.devices = {{'C', WIDE("\\Device\\HarddiskVolume1")}, {'D', WIDE("\\Device\\HarddiskVolume2")}};
    }

    static std::string DosPath(const Text& path) { return Narrow(DevicePathToDosPath(path).c_str()); }

    System& system = Instance();
};

TEST_F(DevicePath, BecomesTheLetterWithItsColonAndTheRest) {
    EXPECT_EQ(DosPath(WIDE("\\Device\\HarddiskVolume2\\dir\\file.exe")), "D:\\dir\\file.exe");
}

TEST_F(DevicePath, AsksForEachLetterFromAToTheOneThatFitsWithRoomFor64Characters) {
    DosPath(WIDE("\\Device\\HarddiskVolume2\\x"));
    EXPECT_EQ(system.TakeCalls(), (std::vector<std::string>{"QueryDosDeviceW(A:, 64)", "QueryDosDeviceW(B:, 64)",
                                                            "QueryDosDeviceW(C:, 64)", "QueryDosDeviceW(D:, 64)"}));
}

TEST_F(DevicePath, ThatIsEmptyGivesAnEmptyOneWithoutAsking) {
    EXPECT_EQ(DosPath(Text()), "");
    EXPECT_EQ(system.TakeCalls(), std::vector<std::string>{});
}

TEST_F(DevicePath, ThatNoLetterFitsGivesAnEmptyOneAfterAll26) {
    EXPECT_EQ(DosPath(WIDE("\\Device\\HarddiskVolume3\\x")), "");
    EXPECT_EQ(system.TakeCalls().size(), 26u);
    system.devices = {{'Z', WIDE("\\Device\\HarddiskVolume3")}};
    EXPECT_EQ(DosPath(WIDE("\\Device\\HarddiskVolume3\\x")), "Z:\\x");
}

TEST_F(DevicePath, IsComparedWithoutRegardToTheCaseOfAsciiLettersAndKeepsItsOwn) {
    EXPECT_EQ(DosPath(WIDE("\\dEVICE\\hARDDISKvOLUME1\\Dir\\File")), "C:\\Dir\\File");
}

TEST_F(DevicePath, EachAsciiLetterIsComparedWithoutRegardToCase) {
    for (char letter = 'a'; letter <= 'z'; ++letter) {
        const auto small = static_cast<WideChar>(letter);
        const auto capital = static_cast<WideChar>(letter - 'a' + 'A');
        system.devices = {{'E', Text(WIDE("\\Device\\")) + capital}};
        EXPECT_EQ(DosPath(Text(WIDE("\\Device\\")) + small + WIDE("\\x")), "E:\\x") << letter;
        system.devices = {{'E', Text(WIDE("\\Device\\")) + small}};
        EXPECT_EQ(DosPath(Text(WIDE("\\Device\\")) + capital + WIDE("\\x")), "E:\\x") << letter;
    }
}

TEST_F(DevicePath, OtherCharactersAreComparedExactly) {
    system.devices = {{'E', Text(WIDE("\\Device\\")) + WideChar{0xE9}}}; // a small letter outside ASCII
    EXPECT_EQ(DosPath(Text(WIDE("\\Device\\")) + WideChar{0xC9} + WIDE("\\x")), "");
    EXPECT_EQ(DosPath(Text(WIDE("\\Device\\")) + WideChar{0xE9} + WIDE("\\x")), "E:\\x");
    // The characters around the letters are none.
    system.devices = {{'E', WIDE("\\Device\\@[`{")}};
    EXPECT_EQ(DosPath(WIDE("\\Device\\`{@[\\x")), "");
}

TEST_F(DevicePath, TheLowestLetterWins) {
    system.devices = {{'Q', WIDE("\\Device\\V")}, {'F', WIDE("\\Device\\V")}};
    EXPECT_EQ(DosPath(WIDE("\\Device\\V\\x")), "F:\\x");
}

TEST_F(DevicePath, TheNameOfVolume1MatchesAPathOnVolume10) {
    system.devices[static_cast<char>('E')] = WIDE("\\Device\\HarddiskVolume10");
    EXPECT_EQ(DosPath(WIDE("\\Device\\HarddiskVolume10\\x")), "C:0\\x");
}

TEST_F(DevicePath, OfTheDeviceItselfIsTheBareLetter) {
    EXPECT_EQ(DosPath(WIDE("\\Device\\HarddiskVolume1")), "C:");
}

TEST_F(DevicePath, OnlyTheFirstNameOfALetterCounts) {
    Text names = WIDE("\\Device\\New");
    names += WideChar{};
    names += WIDE("\\Device\\Old");
    names += WideChar{};
    system.devices = {{'E', names}};
    EXPECT_EQ(DosPath(WIDE("\\Device\\New\\x")), "E:\\x");
    EXPECT_EQ(DosPath(WIDE("\\Device\\Old\\x")), "");
}

TEST_F(DevicePath, ALetterWithAnEmptyNameIsPassedOver) {
    Text empty;
    empty += WideChar{};
    system.devices[static_cast<char>('A')] = empty;
    EXPECT_EQ(DosPath(WIDE("\\Device\\HarddiskVolume1\\x")), "C:\\x");
}

TEST_F(DevicePath, ANameThatFillsTheBufferWithoutANulIsTakenWhole) {
    const Text name = Text(WIDE("\\Device\\")) + Text(56, WIDE('n'));
    system.devices = {{'E', name}};
    EXPECT_EQ(DosPath(name + WIDE("\\x")), "E:\\x");
}

TEST_F(DevicePath, ALetterWhoseNameDoesNotFitIsSkippedWhateverTheBufferHolds) {
    const Text name = Text(WIDE("\\Device\\")) + Text(57, WIDE('n'));
    system.devices = {{'E', name}};
    EXPECT_EQ(DosPath(name + WIDE("\\x")), "");
}

TEST_F(DevicePath, ShorterThanADeviceNameButEqualAsFarAsItGoesThrowsOutOfRange) {
    EXPECT_THROW(DevicePathToDosPath(WIDE("\\Device\\Hard")), std::out_of_range);
    EXPECT_THROW(DevicePathToDosPath(WIDE("\\")), std::out_of_range);
}

TEST_F(DevicePath, ThatIsADrivePathAlreadyGivesAnEmptyOne) {
    EXPECT_EQ(DosPath(WIDE("C:\\dir\\file.exe")), "");
}

} // namespace
