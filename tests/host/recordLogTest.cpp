#include "library/recordLog.h"

#include <cstdlib>
#include <fstream>

#include <gtest/gtest.h>

#include "document/filePath.h"
#include "host/environment.h"

using namespace mordhost;

namespace {

std::filesystem::path LogDirectory() {
    return PathOf(mordhostTest::EnvironmentText("ZELK_LOG_DIR"));
}

// Writes as the library's logger does.
void Append(const std::string& text) {
    std::ofstream(LogDirectory() / "MORD_Recv.log", std::ios::binary | std::ios::app) << text;
}

} // namespace

TEST(RecordLog, TellsTheLibraryToWriteIntoADirectoryOfItsOwn) {
    const RecordLog log(true);
    ASSERT_TRUE(std::filesystem::is_directory(LogDirectory()));
    EXPECT_EQ(ReadWholeFile(Utf8Of(LogDirectory() / "Zelklog.ini")), "[OUTLOG]\nWriteLog=1\nDebugView=0\nLogLevel=0\n");
}

TEST(RecordLog, TellsTheLibraryToBeSilent) {
    const RecordLog log(false);
    EXPECT_EQ(ReadWholeFile(Utf8Of(LogDirectory() / "Zelklog.ini")), "[OUTLOG]\nWriteLog=0\nDebugView=0\nLogLevel=0\n");
}

TEST(RecordLog, GivesWhatWasWrittenSinceTheLastTime) {
    RecordLog log(true);
    EXPECT_EQ(log.Take(), "") << "there is no file yet";
    Append("one\r\n");
    EXPECT_EQ(log.Take(), "one\r\n");
    EXPECT_EQ(log.Take(), "");
    Append("two\r\n");
    Append("three\r\n");
    EXPECT_EQ(log.Take(), "two\r\nthree\r\n");
}

TEST(RecordLog, GivesLongTextsWhole) {
    RecordLog log(true);
    const std::string text(100000, 'x');
    Append(text);
    EXPECT_EQ(log.Take(), text);
}

TEST(RecordLog, TheFileDoesNotGrowWithoutBound) {
    RecordLog log(true);
    const std::string text(1U << 20U, 'x');
    for (int i = 0; i < 10; ++i) {
        Append(text);
        ASSERT_EQ(log.Take().size(), text.size());
    }
    EXPECT_LT(std::filesystem::file_size(LogDirectory() / "MORD_Recv.log"), 6U << 20U);
    Append("still here");
    EXPECT_EQ(log.Take(), "still here");
}

TEST(RecordLog, LeavesNothingBehind) {
    std::filesystem::path directory;
    {
        RecordLog log(true);
        directory = LogDirectory();
        Append("x");
        log.Take();
    }
    EXPECT_FALSE(std::filesystem::exists(directory));
}

TEST(RecordLog, TwoHaveDirectoriesOfTheirOwn) {
    const RecordLog first(true);
    const std::filesystem::path directory = LogDirectory();
    const RecordLog second(true);
    EXPECT_NE(LogDirectory(), directory);
}
