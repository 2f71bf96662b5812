// The log writer and the errors of Linux files: full disks, size limits, pipes.
#include <csignal>
#include <thread>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include "unit/siblings/logRecords.h"

namespace siblingTest {

namespace {

namespace fs = std::filesystem;

constexpr auto writeFailed = static_cast<int32_t>(0x80004005);

class LogWriterLinuxTest : public testing::Test {
protected:
    fs::path File() const { return folder.Path() / "MORD_Recv.log"; }

    const LogFolder folder;
    const SiblingLibrary library{std::string("ZelkBase")};
    const ServiceHolder<ILogWriter> writer = library.Make<ILogWriter>(SID_LogWriter);
};

// Limits the size of files that this process writes, during the lifetime of the object.
class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t size) {
        getrlimit(RLIMIT_FSIZE, &m_former);
        const rlimit limit{size, m_former.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit() { setrlimit(RLIMIT_FSIZE, &m_former); }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;

private:
    rlimit m_former{};
};

bool IsPending(int signal) {
    sigset_t pending;
    sigpending(&pending);
    return sigismember(&pending, signal) == 1;
}

bool IsBlocked(int signal) {
    sigset_t blocked;
    pthread_sigmask(SIG_BLOCK, nullptr, &blocked);
    return sigismember(&blocked, signal) == 1;
}

TEST_F(LogWriterLinuxTest, survivesAFullDisk) {
    fs::create_symlink("/dev/full", File());
    ASSERT_EQ(writer->Start(WIDE("MORD_Recv"), 0), 0);
    EXPECT_EQ(writer->WriteRecord(WIDE("lost\r\n"), levelTrace), writeFailed);
    EXPECT_EQ(writer->WriteRecord(WIDE("lost too\r\n"), levelError), writeFailed);
}

TEST_F(LogWriterLinuxTest, survivesAFullDiskWithSeveralThreads) {
    fs::create_symlink("/dev/full", File());
    ASSERT_EQ(writer->Start(WIDE("MORD_Recv"), 0), 0);
    std::vector<std::thread> threads;
    std::vector<int> lost(4);
    for (int& count : lost) {
        threads.emplace_back([this, &count] {
            for (int round = 0; round < 500; ++round) {
                count += writer->WriteRecord(WIDE("lost\r\n"), levelTrace) == writeFailed;
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(lost, std::vector<int>(4, 500));
}

TEST_F(LogWriterLinuxTest, failsInADirectoryThatAllowsNoFiles) {
    SetVariable("ZELK_LOG_DIR", WIDE("/proc/self"));
    const auto refused = library.Make<ILogWriter>(SID_LogWriter);
    EXPECT_EQ(refused->Start(WIDE("MORD_Recv"), 0), writeFailed);
}

TEST_F(LogWriterLinuxTest, losesRecordsAtTheFileSizeLimitAndContinuesOnANewLine) {
    ASSERT_EQ(writer->Start(WIDE("MORD_Recv"), 0), 0);
    {
        const FileSizeLimit limit(10);
        EXPECT_EQ(writer->WriteRecord(WIDE("12345\r\n"), levelTrace), 0);
        EXPECT_EQ(writer->WriteRecord(WIDE("67890\r\n"), levelTrace), writeFailed) << "three bytes fit";
        EXPECT_EQ(writer->WriteRecord(WIDE("lost\r\n"), levelTrace), writeFailed) << "SIGXFSZ would end the process";
    }
    EXPECT_EQ(writer->WriteRecord(WIDE("next\r\n"), levelTrace), 0);
    EXPECT_EQ(folder.Log("MORD_Recv"), "12345\r\n678\r\nnext\r\n");
    EXPECT_FALSE(IsPending(SIGXFSZ));
    EXPECT_FALSE(IsBlocked(SIGXFSZ));
}

TEST_F(LogWriterLinuxTest, keepsAPendingSignalOfTheHost) {
    ASSERT_EQ(writer->Start(WIDE("MORD_Recv"), 0), 0);
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGXFSZ);
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
    pthread_kill(pthread_self(), SIGXFSZ);
    {
        const FileSizeLimit limit(0);
        EXPECT_EQ(writer->WriteRecord(WIDE("lost\r\n"), levelTrace), writeFailed);
    }
    EXPECT_TRUE(IsPending(SIGXFSZ));
    EXPECT_TRUE(IsBlocked(SIGXFSZ));
    constexpr timespec now{};
    EXPECT_EQ(sigtimedwait(&signals, nullptr, &now), SIGXFSZ);
    pthread_sigmask(SIG_UNBLOCK, &signals, nullptr);
}

TEST_F(LogWriterLinuxTest, survivesAPipeWithoutAReader) {
    ASSERT_EQ(mkfifo(File().c_str(), 0600), 0);
    EXPECT_EQ(writer->Start(WIDE("MORD_Recv"), 0), writeFailed) << "no reader, no wait";
    const int reader = open(File().c_str(), O_RDONLY | O_NONBLOCK);
    ASSERT_EQ(writer->Start(WIDE("MORD_Recv"), 0), 0);
    EXPECT_EQ(writer->WriteRecord(WIDE("one\r\n"), levelTrace), 0);
    char text[8] = {};
    EXPECT_EQ(read(reader, text, sizeof text), 5);
    EXPECT_STREQ(text, "one\r\n");
    close(reader);
    EXPECT_EQ(writer->WriteRecord(WIDE("lost\r\n"), levelTrace), writeFailed) << "SIGPIPE would end the process";
    EXPECT_FALSE(IsPending(SIGPIPE));
}

TEST_F(LogWriterLinuxTest, doesNotWaitForAFullPipe) {
    ASSERT_EQ(mkfifo(File().c_str(), 0600), 0);
    const int reader = open(File().c_str(), O_RDONLY | O_NONBLOCK);
    ASSERT_EQ(writer->Start(WIDE("MORD_Recv"), 0), 0);
    int32_t result = 0;
    for (int round = 0; round < 100000 && result == 0; ++round) {
        result = writer->WriteRecord(WIDE("0123456789ABCDEF0123456789ABCDEF\r\n"), levelTrace);
    }
    EXPECT_EQ(result, writeFailed);
    close(reader);
}

TEST_F(LogWriterLinuxTest, concurrentProcessesWriteCompleteRecords) {
    constexpr int count = 1000;
    const std::vector<std::string> tags{"alpha", "beta", "gamma", "delta"};
    std::vector<std::vector<std::string>> arguments;
    for (const std::string& tag : tags) {
        arguments.push_back({"MORD_Recv", tag, std::to_string(count)});
    }
    ASSERT_TRUE(RunPrograms("logAppender", arguments));
    EXPECT_TRUE(HoldsNumbered(folder.Log("MORD_Recv"), tags, count));
}

TEST_F(LogWriterLinuxTest, opensItsFileForTheOwnerAndWithoutInheritance) {
    const mode_t before = umask(0);
    ASSERT_EQ(writer->Start(WIDE("MORD_Recv"), 0), 0);
    umask(before);
    struct stat status {};
    ASSERT_EQ(stat(File().c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0640U);
    int found = 0;
    for (const fs::directory_entry& entry : fs::directory_iterator("/proc/self/fd")) {
        struct stat of {};
        const int descriptor = std::stoi(entry.path().filename());
        if (fstat(descriptor, &of) == 0 && of.st_ino == status.st_ino && of.st_dev == status.st_dev) {
            ++found;
            EXPECT_EQ(fcntl(descriptor, F_GETFD) & FD_CLOEXEC, FD_CLOEXEC);
        }
    }
    EXPECT_EQ(found, 1);
}

} // namespace

} // namespace siblingTest
