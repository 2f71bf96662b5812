// The log writer over a scripted stream.
#include <deque>

#include <gtest/gtest.h>

#include "unit/siblings/logFolder.h"
#include "zelkBase/logWriter.h"

namespace siblings {

namespace {

constexpr auto failed = static_cast<int32_t>(0x80004005);
constexpr auto notStarted = static_cast<int32_t>(0x8000FFFF);
constexpr auto outOfMemory = static_cast<int32_t>(0x8007000E);
constexpr size_t all = static_cast<size_t>(-1);

struct Disk {
    std::string file;              // its content
    std::deque<size_t> room;       // the bytes that each of the next writes accepts; later writes accept all
    std::vector<size_t> writes;    // the size of each write
    std::vector<WideString> paths; // of each file opened
    int openStreams = 0;
};
Disk disk;

class DiskStream final : public AppendStream {
public:
    DiskStream() { ++disk.openStreams; }
    ~DiskStream() override { --disk.openStreams; }

    size_t Append(std::string_view bytes) override {
        size_t room = all;
        if (!disk.room.empty()) {
            room = disk.room.front();
            disk.room.pop_front();
        }
        disk.writes.push_back(bytes.size());
        const std::string_view taken = bytes.substr(0, room);
        disk.file += taken;
        return taken.size();
    }
};

std::unique_ptr<AppendStream> OpenOnDisk(const WideString& path) {
    disk.paths.push_back(path);
    return std::make_unique<DiskStream>();
}

class LogWriterStreamTest : public testing::Test {
protected:
    LogWriterStreamTest() {
        disk = {};
        siblingTest::SetVariable("ZELK_LOG_DIR", folder.Text());
        writer = new LogWriter(SID_LogWriter, OpenOnDisk);
        writer->Start(WIDE("module"), 0);
    }
    ~LogWriterStreamTest() override {
        writer->Release();
        siblingTest::SetVariable("ZELK_LOG_DIR", {});
    }

    int32_t Write(const WideChar* text) { return writer->WriteRecord(text, 30); }

    const siblingTest::TestFolder folder;
    LogWriter* writer = nullptr;
};

TEST_F(LogWriterStreamTest, opensTheFileOfTheModuleInTheLogDirectory) {
    EXPECT_EQ(disk.paths, (std::vector<WideString>{folder.TextWithSeparator() + WIDE("module.log")}));
}

TEST_F(LogWriterStreamTest, writesEachRecordInOneWrite) {
    EXPECT_EQ(Write(WIDE("one\r\n")), 0);
    EXPECT_EQ(Write(WideString(100000, WideChar{'x'}).c_str()), 0);
    EXPECT_EQ(disk.writes, (std::vector<size_t>{5, 100000}));
}

TEST_F(LogWriterStreamTest, losesARejectedRecordAndWritesTheNext) {
    disk.room = {0, 0};
    EXPECT_EQ(Write(WIDE("one\r\n")), failed);
    EXPECT_EQ(Write(WIDE("two\r\n")), failed);
    EXPECT_EQ(Write(WIDE("three\r\n")), 0);
    EXPECT_EQ(disk.file, "three\r\n");
}

TEST_F(LogWriterStreamTest, startsANewLineAfterATornRecord) {
    disk.room = {3};
    EXPECT_EQ(Write(WIDE("one and more\r\n")), failed);
    EXPECT_EQ(Write(WIDE("two\r\n")), 0);
    EXPECT_EQ(Write(WIDE("three\r\n")), 0);
    EXPECT_EQ(disk.file, "one\r\ntwo\r\nthree\r\n");
    EXPECT_EQ(disk.writes, (std::vector<size_t>{14, 7, 7})) << "the line end goes with the record";
}

TEST_F(LogWriterStreamTest, startsANewLineAfterATornAndRejectedRecords) {
    disk.room = {3, 0, 0};
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(Write(WIDE("one and more\r\n")), failed);
    }
    EXPECT_EQ(Write(WIDE("two\r\n")), 0);
    EXPECT_EQ(disk.file, "one\r\ntwo\r\n");
}

TEST_F(LogWriterStreamTest, aNewFileStartsWithoutALineEnd) {
    disk.room = {3};
    EXPECT_EQ(Write(WIDE("one and more\r\n")), failed);
    ASSERT_EQ(writer->Start(WIDE("other"), 0), 0);
    disk.file.clear();
    EXPECT_EQ(Write(WIDE("two\r\n")), 0);
    EXPECT_EQ(disk.file, "two\r\n");
}

TEST_F(LogWriterStreamTest, writesNothingForARecordBelowItsLevel) {
    writer->SetLevel(31);
    EXPECT_EQ(Write(WIDE("one\r\n")), 0);
    EXPECT_TRUE(disk.writes.empty());
}

TEST_F(LogWriterStreamTest, startClosesTheFormerFile) {
    EXPECT_EQ(disk.openStreams, 1);
    ASSERT_EQ(writer->Start(WIDE("other"), 0), 0);
    EXPECT_EQ(disk.openStreams, 1);
    EXPECT_NE(writer->Start(nullptr, 0), 0);
    EXPECT_EQ(disk.openStreams, 0);
}

TEST_F(LogWriterStreamTest, lastReleaseClosesTheFile) {
    auto* const other = new LogWriter(SID_LogWriter, OpenOnDisk);
    other->Start(WIDE("other"), 0);
    EXPECT_EQ(disk.openStreams, 2);
    other->Release();
    EXPECT_EQ(disk.openStreams, 1);
}

TEST_F(LogWriterStreamTest, reportsExhaustedMemoryAndHasNoFile) {
    auto* const other = new LogWriter(
        SID_LogWriter, [](const WideString&) -> std::unique_ptr<AppendStream> { throw std::bad_alloc(); });
    EXPECT_EQ(other->Start(WIDE("other"), 0), outOfMemory);
    EXPECT_EQ(other->WriteRecord(WIDE("one\r\n"), 30), notStarted);
    other->Release();
}

} // namespace

} // namespace siblings
