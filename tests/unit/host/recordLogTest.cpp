#include "decide/recordLog.h"

#include <filesystem>

#include <gtest/gtest.h>

#include "decide/libraries.h"
#include "system/filePath.h"
#include "system/inputStream.h"
#include "unit/host/environment.h"
#include "unit/host/fakeBase.h"

using namespace mordhost;
using mordhostTest::FakeBase;

namespace {

std::filesystem::path LogDirectory() {
    return PathOf(mordhostTest::EnvironmentText("ZELK_LOG_DIR"));
}

void Write(const WideChar* record) {
    EXPECT_EQ(FakeBase::writer->WriteRecord(record, 30), 0);
}

WrittenRecords Taken(RecordLog& log) {
    WrittenRecords records{"of before", {9}};
    log.Take(records);
    return records;
}

} // namespace

TEST(RecordLog, EnablesTheLogInAPrivateDirectory) {
    const RecordLog log(FakeBase::Factory(), true);
    ASSERT_TRUE(std::filesystem::is_directory(LogDirectory()));
    EXPECT_EQ(InputStream(Utf8Of(LogDirectory() / "Zelklog.ini")).ReadAll(),
              "[OUTLOG]\nWriteLog=1\nDebugView=0\nLogLevel=0\n");
}

TEST(RecordLog, DisablesTheLog) {
    RecordLog log(ServiceFactory(nullptr), false);
    EXPECT_EQ(InputStream(Utf8Of(LogDirectory() / "Zelklog.ini")).ReadAll(),
              "[OUTLOG]\nWriteLog=0\nDebugView=0\nLogLevel=0\n");
    const WrittenRecords records = Taken(log);
    EXPECT_EQ(records.text, "");
    EXPECT_TRUE(records.ends.empty());
}

TEST(RecordLog, ReturnsTheRecordsSinceTheLastCall) {
    RecordLog log(FakeBase::Factory(), true);
    EXPECT_EQ(Taken(log).text, "");
    Write(WIDE("one\r\n"));
    EXPECT_EQ(Taken(log).text, "one\r\n");
    EXPECT_EQ(Taken(log).text, "");
    Write(WIDE("two\r\n"));
    Write(WIDE("three\r\nin two lines\r\n"));
    const WrittenRecords records = Taken(log);
    EXPECT_EQ(records.text, "two\r\nthree\r\nin two lines\r\n");
    EXPECT_EQ(records.ends, (std::vector<size_t>{5, 26}));
}

TEST(RecordLog, AcceptsTheLongestRecord) {
    RecordLog log(FakeBase::Factory(), true);
    const std::basic_string<WideChar> wide(100000, static_cast<WideChar>(0x20AC));
    Write(wide.c_str());
    const WrittenRecords records = Taken(log);
    EXPECT_EQ(records.text.size(), 300000U);
    EXPECT_EQ(records.ends, std::vector<size_t>{300000});
}

TEST(RecordLog, TheLibraryMayReleaseTheWriterLast) {
    ILogWriter* writer = nullptr;
    {
        const RecordLog log(FakeBase::Factory(), true);
        writer = FakeBase::writer;
        EXPECT_EQ(writer->AddRef(), 2);
    }
    EXPECT_EQ(FakeBase::writer, nullptr) << "no other writer is made of it";
    EXPECT_EQ(writer->WriteRecord(WIDE("at the end\r\n"), 30), 0);
    EXPECT_EQ(writer->Release(), 0);
}

TEST(RecordLog, TheWriterHasOnlyItsOwnInterface) {
    const RecordLog log(FakeBase::Factory(), true);
    void* view = nullptr;
    EXPECT_EQ(FakeBase::writer->QueryInterface(&SID_LogConfig, &view), RESULT_NO_INTERFACE);
    EXPECT_EQ(view, nullptr);
    EXPECT_EQ(FakeBase::writer->QueryInterface(&SID_LogWriter, &view), RESULT_OK);
    EXPECT_EQ(view, FakeBase::writer);
    EXPECT_EQ(FakeBase::writer->Release(), 1);
}

TEST(RecordLog, ABaseLibraryWithoutTheServiceIsRefused) {
    FakeBase::hasHostLog = false;
    EXPECT_THROW(RecordLog(FakeBase::Factory(), true), LoadError);
    EXPECT_FALSE(std::filesystem::exists(LogDirectory()));
    EXPECT_NO_THROW(RecordLog(FakeBase::Factory(), false));
    FakeBase::hasHostLog = true;
}

TEST(RecordLog, RemovesItsDirectory) {
    std::filesystem::path directory;
    {
        const RecordLog log(FakeBase::Factory(), true);
        directory = LogDirectory();
        Write(WIDE("x"));
    }
    EXPECT_FALSE(std::filesystem::exists(directory));
}

TEST(RecordLog, TwoLogsHaveSeparateDirectories) {
    const RecordLog first(ServiceFactory(nullptr), false);
    const std::filesystem::path directory = LogDirectory();
    const RecordLog second(ServiceFactory(nullptr), false);
    EXPECT_NE(LogDirectory(), directory);
}
