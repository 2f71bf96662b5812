// The process behind a connection, on Windows: its path comes from its own parameters.
#include "kit/text/utf.h"
#include "unit/mordRev/countedPathLookups.h"
#include "unit/mordRev/processPathFixture.h"

#include <windows.h>

#include <winternl.h>

using namespace kit;

namespace {

constexpr RecordSite inGetProcPath{"procPathWin32.cpp CMordRecv::GetProcPathByPid"};

// Process ids are multiples of 4.
constexpr int32_t noProcess = 0x7FFFFFF1;

using ProcessPath = ProcessPathFixture;

// The path of this program as the system tells it, in lower case.
std::string OwnPathInLowerCase() {
    std::wstring path(32768, L'\0');
    path.resize(::GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
    std::string narrow = ToNarrow(path);
    for (char& c : narrow) {
        c = c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
    }
    return narrow;
}

TEST_F(ProcessPath, OfALivingProcessIsInLowerCase) {
    event.Int32("pid", static_cast<int32_t>(::GetCurrentProcessId()));
    Send();
    const std::string path = OwnPathInLowerCase();
    std::string escaped;
    for (const char c : path) {
        escaped += c == '\\' ? "\\\\" : std::string(1, c);
    }
    const ExpectedReport report = Expected(path.substr(path.rfind('\\') + 1), escaped);
    EXPECT_EQ(sink.Reports(), Lines{report.Text()});
    EXPECT_EQ(TakeRecords(), ReportRecords(report));
}

// The system gives the id of a process that has ended to a new one. Here this process changes its own parameters.
TEST_F(ProcessPath, IsReadAnewForEachReport) {
    std::string path;
    ASSERT_TRUE(CMordRecv::GetProcPathByPid(::GetCurrentProcessId(), &path));
    EXPECT_EQ(path, OwnPathInLowerCase());
    UNICODE_STRING& image = NtCurrentTeb()->ProcessEnvironmentBlock->ProcessParameters->ImagePathName;
    const UNICODE_STRING before = image;
    std::wstring other = L"C:\\Other.exe";
    image = {static_cast<USHORT>(other.size() * sizeof(wchar_t)), static_cast<USHORT>(other.size() * sizeof(wchar_t)),
             other.data()};
    const bool isRead = CMordRecv::GetProcPathByPid(::GetCurrentProcessId(), &path);
    image = before;
    EXPECT_TRUE(isRead);
    EXPECT_EQ(path, "c:\\other.exe");
    ASSERT_TRUE(CMordRecv::GetProcPathByPid(::GetCurrentProcessId(), &path));
    EXPECT_EQ(path, OwnPathInLowerCase());
}

TEST_F(ProcessPath, OfPid0IsEmptyAndTheReportGoesOutAllTheSame) {
    event.Int32("pid", 0);
    Send();
    EXPECT_EQ(sink.Reports(), Lines{Expected("", "").Text()});
    EXPECT_EQ(TakeRecords(), RecordsWithError(inGetProcPath.Error("Open process failed! pid=0 ,lasterror=87")));
}

TEST_F(ProcessPath, WithoutAPidIsLookedUpFor0) {
    FakeRecord bare;
    receiver->ReportEventHandleRes(&bare, rulePointers.data(), 1, REPLY_BLOCK, false);
    EXPECT_EQ(sink.Reports(), Lines{ExpectedOfNothing().Text()});
    EXPECT_EQ(TakeRecords(),
              RecordsWithError(inGetProcPath.Error("Open process failed! pid=0 ,lasterror=87"), ExpectedOfNothing()));
}

TEST_F(ProcessPath, OfAPidWhoseReadFailsIsLookedUpFor0) {
    event.FailingInt32("pid", 4, 1);
    Send();
    EXPECT_EQ(TakeRecords(), RecordsWithError(inGetProcPath.Error("Open process failed! pid=0 ,lasterror=87")));
}

TEST_F(ProcessPath, OfAProcessThatDoesNotExistIsEmpty) {
    event.Int32("pid", noProcess);
    Send();
    EXPECT_EQ(sink.Reports(), Lines{Expected("", "").Text()});
    EXPECT_EQ(TakeRecords(),
              RecordsWithError(inGetProcPath.Error("Open process failed! pid=2147483633 ,lasterror=87")));
}

TEST_F(ProcessPath, IsEmptiedWhereTheLookUpFails) {
    std::string path = "before";
    EXPECT_FALSE(CMordRecv::GetProcPathByPid(static_cast<uint32_t>(noProcess), &path));
    EXPECT_EQ(path, "");
    EXPECT_TRUE(CMordRecv::GetProcPathByPid(::GetCurrentProcessId(), &path));
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
