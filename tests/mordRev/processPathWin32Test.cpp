// The process behind a connection, on Windows: its path is empty, and the record tells how far the look-up came.
#include "mordRev/processPathFixture.h"

#include <windows.h>

using namespace hostKit;

namespace {

constexpr RecordSite inGetProcPath{"procPathWin32.cpp CMordRecv::GetProcPathByPid"};

// Process ids are multiples of 4.
constexpr int32_t noProcess = 0x7FFFFFF1;

using ProcessPath = ProcessPathFixture;

TEST_F(ProcessPath, OfALivingProcessIsEmptyAndTheReportGoesOutAllTheSame) {
    event.Int32("pid", static_cast<int32_t>(::GetCurrentProcessId()));
    Send();
    EXPECT_EQ(sink.Reports(), Lines{Expected("", "").Text()});
    EXPECT_EQ(TakeRecords(), RecordsWithError(inGetProcPath.Error("get process path fail, pid=" +
                                                                  std::to_string(::GetCurrentProcessId()))));
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
}

TEST_F(ProcessPath, IsNotLookedUpForPid4) {
    Send();
    EXPECT_EQ(sink.Reports(), Lines{Expected("System", "System").Text()});
    EXPECT_EQ(TakeRecords(), ReportRecords(Expected("System", "System")));
}

} // namespace
