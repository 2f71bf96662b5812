// The path lookup on real processes of both widths.
#include <array>
#include <thread>

#include <windows.h>

#include "unit/native/real/openHandles.h"
#include "unit/native/real/realChildFixture.h"

namespace {

constexpr auto site = "procPathWin32.cpp CMordRecv::GetProcPathByPid";

std::string Failure(uint32_t pid) {
    return kit::Error(site, "get process path fail, pid=" + std::to_string(pid));
}

class RealPath : public RealChildFixture {
protected:
    void SetUp() override {
        RealChildFixture::SetUp();
        StartLogging();
    }

    // Returns the path, or "failed" if the lookup fails; checks the record of the failure.
    std::string Look() {
        std::string path = "what was there";
        const bool found = CMordRecv::GetProcPathByPid(child->Id(), &path);
        EXPECT_EQ(TakeRecords(), found ? std::vector<std::string>{} : std::vector{Failure(child->Id())});
        EXPECT_TRUE(found || path.empty());
        return found ? path : "failed";
    }
};

TEST_P(RealPath, IsTheChildsProgramInLowerCase) {
    EXPECT_EQ(Look(), LowerCase(Program()));
    EXPECT_TRUE(Look().ends_with("\\nativechild.exe"));
}

TEST_P(RealPath, LowersAsciiCapitalsAloneAndIsUtf8) {
    child->Tell("setPath Q:\\\xC3\x84rger\\\xCE\xA9\\FILE.Exe");
    EXPECT_EQ(Look(), "q:\\\xC3\x84rger\\\xCE\xA9\\file.exe");
}

TEST_P(RealPath, StaysInTheFormThatTheBlockHolds) {
    child->Tell("setPath \\Device\\HarddiskVolume7\\Dir\\File.exe");
    EXPECT_EQ(Look(), "\\device\\harddiskvolume7\\dir\\file.exe");
}

TEST_P(RealPath, WhoseDoubledReadRunsIntoMemoryThatCannotBeReadFails) {
    child->Tell("setPathBeforeUnreadable C:\\dir\\file.exe");
    EXPECT_EQ(Look(), "failed");
}

TEST_P(RealPath, WithTheLargestMaximumLengthIsDelivered) {
    child->Tell("setPath C:\\dir\\file.exe");
    child->Tell("setMaximumLength 65535");
    EXPECT_EQ(Look(), "c:\\dir\\file.exe");
}

TEST_P(RealPath, WithAMaximumLengthOf0IsEmptyAndASuccess) {
    child->Tell("setMaximumLength 0");
    EXPECT_EQ(Look(), "");
}

TEST_P(RealPath, WithoutANulHasTwiceTheCharactersOfItsMaximumLength) {
    child->Tell("setPathWithoutNul 20");
    EXPECT_EQ(Look(), std::string(40, 'x'));
}

TEST_P(RealPath, OfA32BitChildWhosePebHasAWordBehindTheParametersPointerFails) {
    child->Tell("setWordBehindParameters 3");
    EXPECT_EQ(Look(), ChildIs32Bit() ? "failed" : LowerCase(Program()));
}

TEST_P(RealPath, OfAChildWithoutParametersFails) {
    child->Tell("setParameters 0");
    EXPECT_EQ(Look(), "failed");
}

TEST_P(RealPath, OfAChildThatHasEndedFails) {
    child->End();
    EXPECT_EQ(Look(), "failed"); // this test's handle keeps the process object
}

TEST_P(RealPath, OfAChildThatEndsBetweenTheOpenAndTheReadsIsMissing) {
    TargetProcess& target = Target();
    EXPECT_NE(target.ReadImagePath(), nullptr);
    child->End();
    EXPECT_EQ(target.ReadImagePath(), nullptr);
    EXPECT_EQ(target.ReadCommandLine(), nullptr);
}

TEST_P(RealPath, TheOtherStringsOfTheBlockAreReadToo) {
    const auto commandLine = Target().ReadCommandLine();
    ASSERT_NE(commandLine, nullptr);
    EXPECT_NE(kit::ToNarrow(commandLine->buffer.get()).find("nativeChild.exe"), std::string::npos);
    const auto directory = Target().ReadCurrentDirectory();
    ASSERT_NE(directory, nullptr);
    wchar_t own[MAX_PATH] = {};
    GetCurrentDirectoryW(MAX_PATH, own); // which the child inherited
    std::string expected = kit::ToNarrow(own);
    EXPECT_EQ(LowerCase(kit::ToNarrow(directory->buffer.get())),
              LowerCase(expected.ends_with('\\') ? expected : expected + "\\"));
}

TEST_P(RealPath, TwoThreadsCanLookAtOnce) {
    const std::string expected = LowerCase(Program());
    std::atomic<int> wrong{0};
    const auto look = [&] {
        for (int i = 0; i < 500; ++i) {
            std::string path;
            wrong += !CMordRecv::GetProcPathByPid(child->Id(), &path) || path != expected ? 1 : 0;
        }
    };
    std::thread other(look);
    look();
    other.join();
    EXPECT_EQ(wrong, 0);
}

TEST_P(RealPath, TenThousandLookupsWithFailuresAmongThemLeaveTheNumberOfHandlesAsItWas) {
    ChildProcess damaged(GetParam());
    damaged.Tell("setParameters 0");
    ChildProcess ended(GetParam());
    ended.End(); // its handle here keeps the id
    const std::array<uint32_t, 5> pids = {child->Id(), damaged.Id(), 0, ended.Id(), child->Id()};
    std::string path;
    for (const uint32_t pid : pids) { // each once before the count: lasting allocations exist then
        EXPECT_EQ(CMordRecv::GetProcPathByPid(pid, &path), pid == child->Id());
    }
    LogFileEnabled = false;

    const size_t before = OpenHandles();
    int found = 0;
    for (size_t i = 0; i < 10000; ++i) {
        found += CMordRecv::GetProcPathByPid(pids[i % pids.size()], &path) ? 1 : 0;
    }
    EXPECT_EQ(found, 4000);
    EXPECT_EQ(OpenHandles(), before);
    ExpectThatOneMoreHandleIsCounted();
}

INSTANTIATE_TEST_SUITE_P(Children, RealPath, testing::Values(32, 64), ChildName);

class RealPathOfThisSystem : public kit::ReceiverFixture {
protected:
    void SetUp() override {
        ReceiverFixture::SetUp();
        StartLogging();
    }

    void ExpectFailureOnlyWithoutTheSystemsQuery() {
        WithdrawPebQuery();
        ChildProcess child(callerIs32Bit ? 64 : 32);
        std::string path = "what was there";
        if (!SystemTellsPeb(child.Handle())) {
            EXPECT_FALSE(CMordRecv::GetProcPathByPid(child.Id(), &path));
            EXPECT_EQ(path, "");
            EXPECT_EQ(TakeRecords(), std::vector{Failure(child.Id())});
            ProvidePebQuery();
        }
        EXPECT_TRUE(CMordRecv::GetProcPathByPid(child.Id(), &path));
        EXPECT_EQ(path, LowerCase(ProgramOf(child.Handle())));
        EXPECT_EQ(TakeRecords(), std::vector<std::string>{});
    }
};

TEST_F(RealPathOfThisSystem, OfThisProcessIsItsProgram) {
    std::string path;
    EXPECT_TRUE(CMordRecv::GetProcPathByPid(GetCurrentProcessId(), &path));
    EXPECT_EQ(path, LowerCase(ProgramOf(GetCurrentProcess())));
}

TEST_F(RealPathOfThisSystem, OfPid0IsRefusedByTheSystemAndLogged) {
    EXPECT_EQ(OpenProcess(PROCESS_QUERY_INFORMATION | PROCESS_VM_READ, FALSE, 0), nullptr);
    const DWORD error = GetLastError();
    std::string path = "what was there";
    EXPECT_FALSE(CMordRecv::GetProcPathByPid(0, &path));
    EXPECT_EQ(path, "");
    EXPECT_EQ(TakeRecords(),
              std::vector{kit::Error(site, "Open process failed! pid=0 ,lasterror=" + std::to_string(error))});
}

// Twice: the second time with a table that an earlier test has changed.
TEST_F(RealPathOfThisSystem, OfAChildOfTheOtherWidthFailsIfTheSystemDoesNotReportItsPebAndSucceedsIfItDoes) {
    ExpectFailureOnlyWithoutTheSystemsQuery();
    ExpectFailureOnlyWithoutTheSystemsQuery();
}

} // namespace
