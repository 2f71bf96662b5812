// The log files of the built library.
#include <gtest/gtest.h>

#include "unit/siblings/logRecords.h"

namespace siblingTest {

namespace {

namespace fs = std::filesystem;

constexpr auto failed = static_cast<int32_t>(0x80004005);
constexpr auto notStarted = static_cast<int32_t>(0x8000FFFF);
constexpr auto invalidArgument = static_cast<int32_t>(0x80070057);

class LogWriterTest : public testing::Test {
protected:
    const LogFolder folder;
    const SiblingLibrary library{std::string("ZelkBase")};
    const ServiceHolder<ILogWriter> writer = library.Make<ILogWriter>(SID_LogWriter);
};

TEST_F(LogWriterTest, namesTheFileAfterTheModule) {
    ASSERT_EQ(writer->Start(WIDE("MORD_Recv"), 0), 0);
    EXPECT_EQ(writer->WriteRecord(WIDE("one\r\n"), levelTrace), 0);
    EXPECT_EQ(folder.Read("MORD_Recv.log"), "one\r\n");
}

TEST_F(LogWriterTest, writesUtf8) {
    ASSERT_EQ(writer->Start(WIDE("MORD_Recv"), 0), 0);
    EXPECT_EQ(writer->WriteRecord(WIDE("a\u00E4\u4E16\U0001F600\r\n"), levelTrace), 0);
    EXPECT_EQ(folder.Log("MORD_Recv"), "a\xC3\xA4\xE4\xB8\x96\xF0\x9F\x98\x80\r\n");
}

TEST_F(LogWriterTest, replacesALoneSurrogate) {
    ASSERT_EQ(writer->Start(WIDE("MORD_Recv"), 0), 0);
    const WideChar text[] = {'a', static_cast<WideChar>(0xD800), 'b', static_cast<WideChar>(0xDC00), '\r', '\n', 0};
    EXPECT_EQ(writer->WriteRecord(text, levelTrace), 0);
    EXPECT_EQ(folder.Log("MORD_Recv"), "a\xEF\xBF\xBD"
                                       "b\xEF\xBF\xBD\r\n");
}

TEST_F(LogWriterTest, writesALongRecordWhole) {
    constexpr size_t length = 1000000;
    ASSERT_EQ(writer->Start(WIDE("MORD_Recv"), 0), 0);
    EXPECT_EQ(writer->WriteRecord((WideString(length, WideChar{'x'}) + WIDE("\r\n")).c_str(), levelTrace), 0);
    std::string expected(length, 'x');
    expected.append("\r\n");
    EXPECT_EQ(folder.Log("MORD_Recv"), expected);
}

TEST_F(LogWriterTest, acceptsANonAsciiFileName) {
    ASSERT_EQ(writer->Start(WIDE("M\u00F6rd \u4E16"), 0), 0);
    EXPECT_EQ(writer->WriteRecord(WIDE("one\r\n"), levelTrace), 0);
    EXPECT_EQ(folder.Log("M\xC3\xB6rd \xE4\xB8\x96"), "one\r\n");
}

TEST_F(LogWriterTest, appendsToAnExistingFile) {
    folder.Write("MORD_Recv.log", "of an earlier run\r\n");
    ASSERT_EQ(writer->Start(WIDE("MORD_Recv"), 0), 0);
    writer->WriteRecord(WIDE("one\r\n"), levelTrace);
    EXPECT_EQ(folder.Log("MORD_Recv"), "of an earlier run\r\none\r\n");
}

TEST_F(LogWriterTest, writesEachRecordImmediately) {
    ASSERT_EQ(writer->Start(WIDE("MORD_Recv"), 0), 0);
    for (const char* const expected : {"x\r\n", "x\r\nx\r\n"}) {
        writer->WriteRecord(WIDE("x\r\n"), levelTrace);
        EXPECT_EQ(folder.Log("MORD_Recv"), expected) << "while the writer is open";
    }
}

TEST_F(LogWriterTest, writesAllLevelsByDefault) {
    ASSERT_EQ(writer->Start(WIDE("MORD_Recv"), 0), 0);
    writer->WriteRecord(WIDE("zero\r\n"), 0);
    writer->WriteRecord(WIDE("trace\r\n"), levelTrace);
    writer->WriteRecord(WIDE("error\r\n"), levelError);
    EXPECT_EQ(folder.Log("MORD_Recv"), "zero\r\ntrace\r\nerror\r\n");
}

TEST_F(LogWriterTest, dropsRecordsBelowItsLevel) {
    EXPECT_EQ(writer->SetLevel(35), 0);
    ASSERT_EQ(writer->Start(WIDE("MORD_Recv"), 0), 0);
    EXPECT_EQ(writer->WriteRecord(WIDE("30\r\n"), levelTrace), 0) << "a dropped record is no failure";
    EXPECT_EQ(writer->WriteRecord(WIDE("34\r\n"), 34), 0);
    EXPECT_EQ(writer->WriteRecord(WIDE("35\r\n"), levelError), 0);
    EXPECT_EQ(writer->WriteRecord(WIDE("36\r\n"), 36), 0);
    EXPECT_EQ(folder.Log("MORD_Recv"), "35\r\n36\r\n");
}

TEST_F(LogWriterTest, changesItsLevelAndKeepsItAcrossStarts) {
    ASSERT_EQ(writer->Start(WIDE("MORD_Recv"), 0), 0);
    writer->SetLevel(36);
    writer->WriteRecord(WIDE("lost\r\n"), levelError);
    writer->SetLevel(30);
    ASSERT_EQ(writer->Start(WIDE("MORD_Recv"), 0), 0);
    writer->WriteRecord(WIDE("lost\r\n"), 29);
    writer->WriteRecord(WIDE("kept\r\n"), levelTrace);
    EXPECT_EQ(folder.Log("MORD_Recv"), "kept\r\n");
}

TEST_F(LogWriterTest, treatsLevelsAsSigned) {
    ASSERT_EQ(writer->Start(WIDE("MORD_Recv"), 0), 0);
    writer->SetLevel(0xFFFFFFFF); // -1, as an ini file may hold it
    writer->WriteRecord(WIDE("kept\r\n"), levelTrace);
    writer->WriteRecord(WIDE("lost\r\n"), -2);
    EXPECT_EQ(folder.Log("MORD_Recv"), "kept\r\n");
}

TEST_F(LogWriterTest, dropsRecordsBeforeItsStart) {
    EXPECT_EQ(writer->WriteRecord(WIDE("early\r\n"), levelTrace), notStarted);
    EXPECT_TRUE(fs::is_empty(folder.Path()));
    ASSERT_EQ(writer->Start(WIDE("MORD_Recv"), 0), 0);
    writer->WriteRecord(WIDE("one\r\n"), levelTrace);
    EXPECT_EQ(folder.Log("MORD_Recv"), "one\r\n");
}

TEST_F(LogWriterTest, startWithAnotherNameChangesTheFile) {
    ASSERT_EQ(writer->Start(WIDE("first"), 0), 0);
    writer->WriteRecord(WIDE("one\r\n"), levelTrace);
    ASSERT_EQ(writer->Start(WIDE("second"), 0), 0);
    writer->WriteRecord(WIDE("two\r\n"), levelTrace);
    ASSERT_EQ(writer->Start(WIDE("first"), 0), 0);
    writer->WriteRecord(WIDE("three\r\n"), levelTrace);
    EXPECT_EQ(folder.Log("first"), "one\r\nthree\r\n");
    EXPECT_EQ(folder.Log("second"), "two\r\n");
}

TEST_F(LogWriterTest, rejectsAnInvalidFileName) {
    for (const WideChar* const name : {WIDE(""), WIDE("../up"), WIDE("a/b"), WIDE("a\\b"), WIDE("C:x"), WIDE("a*"),
                                       WIDE("a\nb"), WIDE("<a>"), WIDE("a|b"), WIDE("\"a\""), WIDE("a?")}) {
        ASSERT_EQ(writer->Start(WIDE("good"), 0), 0);
        EXPECT_EQ(writer->Start(name, 0), invalidArgument) << fs::path(name);
        EXPECT_EQ(writer->WriteRecord(WIDE("one\r\n"), levelTrace), notStarted) << "the former file is closed";
    }
    EXPECT_EQ(writer->Start(nullptr, 0), invalidArgument);
    EXPECT_EQ(std::distance(fs::directory_iterator(folder.Path()), {}), 1) << "only good.log";
    EXPECT_FALSE(fs::exists(folder.Path().parent_path() / "up.log"));
}

TEST_F(LogWriterTest, rejectsANullText) {
    ASSERT_EQ(writer->Start(WIDE("MORD_Recv"), 0), 0);
    EXPECT_EQ(writer->WriteRecord(nullptr, levelTrace), invalidArgument);
    EXPECT_EQ(folder.Log("MORD_Recv"), "");
}

TEST_F(LogWriterTest, readsTheDirectoryAtItsCreation) {
    const LogFolder other;
    ASSERT_EQ(writer->Start(WIDE("MORD_Recv"), 0), 0);
    writer->WriteRecord(WIDE("one\r\n"), levelTrace);
    EXPECT_EQ(folder.Log("MORD_Recv"), "one\r\n");
    EXPECT_TRUE(fs::is_empty(other.Path()));
}

TEST_F(LogWriterTest, failsWithoutItsDirectoryAndStartsLater) {
    SetVariable("ZELK_LOG_DIR", (folder.Path() / "later").string<WideChar>());
    const auto late = library.Make<ILogWriter>(SID_LogWriter);
    EXPECT_EQ(late->Start(WIDE("MORD_Recv"), 0), failed);
    EXPECT_EQ(late->WriteRecord(WIDE("lost\r\n"), levelTrace), notStarted);
    fs::create_directory(folder.Path() / "later");
    EXPECT_EQ(late->Start(WIDE("MORD_Recv"), 0), 0);
    EXPECT_EQ(late->WriteRecord(WIDE("one\r\n"), levelTrace), 0);
    EXPECT_EQ(folder.Log("later/MORD_Recv"), "one\r\n");
}

TEST_F(LogWriterTest, failsIfADirectoryHasTheNameOfItsFile) {
    fs::create_directory(folder.Path() / "MORD_Recv.log");
    EXPECT_EQ(writer->Start(WIDE("MORD_Recv"), 0), failed);
    EXPECT_EQ(writer->WriteRecord(WIDE("lost\r\n"), levelTrace), notStarted);
}

TEST_F(LogWriterTest, allowsRenamingItsFile) {
    ASSERT_EQ(writer->Start(WIDE("MORD_Recv"), 0), 0);
    writer->WriteRecord(WIDE("one\r\n"), levelTrace);
    fs::rename(folder.Path() / "MORD_Recv.log", folder.Path() / "MORD_Recv.1.log");
    writer->WriteRecord(WIDE("two\r\n"), levelTrace);
    ASSERT_EQ(writer->Start(WIDE("MORD_Recv"), 0), 0);
    writer->WriteRecord(WIDE("three\r\n"), levelTrace);
    EXPECT_EQ(folder.Log("MORD_Recv.1"), "one\r\ntwo\r\n");
    EXPECT_EQ(folder.Log("MORD_Recv"), "three\r\n");
}

} // namespace

} // namespace siblingTest
