// The process behind a connection, on Linux: its path comes from the system's process table.
#include "unit/mordRev/countedPathLookups.h"
#include "unit/mordRev/processPathFixture.h"

#include <cerrno>
#include <chrono>
#include <csignal>
#include <system_error>
#include <thread>

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace kit;

namespace {

constexpr RecordSite inGetProcPath{"procPathLinux.cpp CMordRecv::GetProcPathByPid"};

// No process has it: it lies above the greatest number that Linux gives out.
constexpr int32_t noProcess = 0x7FFFFFF0;

std::string InLowerCase(std::string path) {
    for (char& c : path) {
        c = c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
    }
    return path;
}

std::string OwnPathInLowerCase() {
    return InLowerCase(std::filesystem::read_symlink("/proc/self/exe"));
}

// A child process. It is ended and waited for with the object.
class Child {
public:
    Child(const std::string& program, std::vector<std::string> texts) {
        texts.insert(texts.begin(), program);
        std::vector<char*> pointers;
        for (std::string& text : texts) {
            pointers.push_back(text.data());
        }
        pointers.push_back(nullptr);
        if (const int error = posix_spawn(&m_pid, program.c_str(), nullptr, nullptr, pointers.data(), environ)) {
            throw std::system_error(error, std::generic_category(), program);
        }
    }
    ~Child() {
        kill(m_pid, SIGKILL);
        waitpid(m_pid, nullptr, 0);
    }
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;

    int32_t Pid() const { return m_pid; }

    // Waits until it has ended; its entry in the process table stays.
    void AwaitEnd() const { Await(WEXITED | WNOWAIT); }

    // Waits until it has stopped itself.
    void AwaitStop() const { Await(WSTOPPED); }
    void Continue() const { kill(m_pid, SIGCONT); }

private:
    void Await(int state) const {
        siginfo_t info;
        while (waitid(P_PID, static_cast<id_t>(m_pid), &info, state) != 0 && errno == EINTR) {
        }
    }

    pid_t m_pid = 0;
};

using ProcessPath = ProcessPathFixture;

TEST_F(ProcessPath, OfALivingProcessIsInLowerCase) {
    event.Int32("pid", getpid());
    Send();
    const std::string path = OwnPathInLowerCase();
    const ExpectedReport report = Expected(path.substr(path.rfind('/') + 1), path);
    EXPECT_EQ(sink.Reports(), Lines{report.Text()});
    EXPECT_EQ(TakeRecords(), ReportRecords(report));
    EXPECT_NE(path, std::filesystem::read_symlink("/proc/self/exe").native()); // the test program's name has capitals
}

// A process keeps its id when it executes another program, as a new process can have the id of one that has ended.
TEST_F(ProcessPath, IsReadAnewForEachReport) {
    const std::string program = std::filesystem::canonical(siblings.LogDirectory()).native() + "/second";
    std::filesystem::copy_file("/bin/sleep", program);
    const Child child("/bin/sh", {"-c", "kill -STOP $$; exec '" + program + "' 60"});
    child.AwaitStop();
    event.Int32("pid", child.Pid());
    Send();
    child.Continue();
    while (std::filesystem::read_symlink("/proc/" + std::to_string(child.Pid()) + "/exe") != program) {
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    Send();
    const std::string shell = std::filesystem::canonical("/bin/sh");
    EXPECT_EQ(sink.Reports(), (Lines{Expected(shell.substr(shell.rfind('/') + 1), shell).Text(),
                                     Expected("second", InLowerCase(program)).Text()}));
}

// A name with the separators of both systems, as a path of the other system would be.
TEST_F(ProcessPath, IsEscapedAndItsNameStandsBehindTheLastSeparatorOfEitherKind) {
    const std::string folder = std::filesystem::canonical(siblings.LogDirectory());
    const std::string program = folder + R"(/C:\Dir "\Client.EXE)";
    std::filesystem::copy_file("/bin/sleep", program);
    const Child child(program, {"60"});
    event.Int32("pid", child.Pid());
    Send();
    EXPECT_EQ(sink.Reports(), Lines{Expected("client.exe", InLowerCase(folder) + R"(/c:\\dir \"\\client.exe)").Text()});
}

TEST_F(ProcessPath, OfAProcessThatHasEndedIsEmpty) {
    const Child child("/bin/sleep", {"0"});
    child.AwaitEnd();
    event.Int32("pid", child.Pid());
    Send();
    EXPECT_EQ(sink.Reports(), Lines{Expected("", "").Text()});
    EXPECT_EQ(TakeRecords(),
              RecordsWithError(inGetProcPath.Error("get process path fail, pid=" + std::to_string(child.Pid()))));
}

TEST_F(ProcessPath, ThatCannotBeHadIsReportedAllTheSameWithLoggingOff) {
    const Child child("/bin/sleep", {"0"});
    child.AwaitEnd();
    LogFileEnabled = false;
    for (const int32_t pid : {child.Pid(), noProcess}) {
        std::string path = "before";
        EXPECT_FALSE(CMordRecv::GetProcPathByPid(static_cast<uint32_t>(pid), &path));
        EXPECT_EQ(path, "");
        event.Int32("pid", pid);
        Send();
    }
    const std::string report = Expected("", "").Text();
    EXPECT_EQ(sink.Reports(), (Lines{report, report}));
    EXPECT_EQ(TakeRecords(), Lines{});
}

TEST_F(ProcessPath, OfPid0IsEmptyAndTheReportGoesOutAllTheSame) {
    event.Int32("pid", 0);
    Send();
    EXPECT_EQ(sink.Reports(), Lines{Expected("", "").Text()});
    EXPECT_EQ(TakeRecords(), RecordsWithError(inGetProcPath.Error("Open process failed! pid=0 ,lasterror=3")));
}

TEST_F(ProcessPath, WithoutAPidIsLookedUpFor0) {
    FakeRecord bare;
    receiver->ReportEventHandleRes(&bare, rulePointers.data(), 1, REPLY_BLOCK, false);
    EXPECT_EQ(sink.Reports(), Lines{ExpectedOfNothing().Text()});
    EXPECT_EQ(TakeRecords(),
              RecordsWithError(inGetProcPath.Error("Open process failed! pid=0 ,lasterror=3"), ExpectedOfNothing()));
}

TEST_F(ProcessPath, OfAPidWhoseReadFailsIsLookedUpFor0) {
    event.FailingInt32("pid", 4, 1);
    Send();
    EXPECT_EQ(sink.Reports(), Lines{Expected("", "").Text()});
    EXPECT_EQ(TakeRecords(), RecordsWithError(inGetProcPath.Error("Open process failed! pid=0 ,lasterror=3")));
}

TEST_F(ProcessPath, OfAProcessThatDoesNotExistIsEmpty) {
    event.Int32("pid", noProcess);
    Send();
    EXPECT_EQ(sink.Reports(), Lines{Expected("", "").Text()});
    EXPECT_EQ(TakeRecords(), RecordsWithError(inGetProcPath.Error("Open process failed! pid=2147483632 ,lasterror=3")));
}

TEST_F(ProcessPath, OfANegativePidIsLookedUpAsAnUnsignedNumber) {
    event.Int32("pid", -1);
    Send();
    EXPECT_EQ(TakeRecords(), RecordsWithError(inGetProcPath.Error("Open process failed! pid=4294967295 ,lasterror=3")));
}

TEST_F(ProcessPath, IsEmptiedWhereTheLookUpFails) {
    std::string path = "before";
    EXPECT_FALSE(CMordRecv::GetProcPathByPid(noProcess, &path));
    EXPECT_EQ(path, "");
    EXPECT_TRUE(CMordRecv::GetProcPathByPid(static_cast<uint32_t>(getpid()), &path));
    EXPECT_EQ(path, OwnPathInLowerCase());
}

TEST_F(ProcessPath, IsNotLookedUpForPid4) {
    const size_t before = PathLookups();
    event.Int32("pid", 4);
    Send();
    EXPECT_EQ(PathLookups(), before);
    EXPECT_EQ(sink.Reports(), Lines{Expected("System", "System").Text()});
    EXPECT_EQ(TakeRecords(), ReportRecords(Expected("System", "System")));
    event.Int32("pid", 5);
    Send();
    EXPECT_EQ(PathLookups(), before + 1);
}

} // namespace
