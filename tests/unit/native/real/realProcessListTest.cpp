// The processes of this system, a child's parent, and the statuses of failed calls.
#include <windows.h>

#include "native/devicePath.h"
#include "native/native.h"
#include "native/wow64Redirection.h"
#include "unit/native/real/realChildFixture.h"

namespace {

class RealProcesses : public RealChildFixture {};

TEST_P(RealProcesses, AreListedWithIdParentAndName) {
    const auto list = Target().ListProcesses();
    const auto found =
        std::find_if(list.begin(), list.end(), [&](const auto& one) { return one->processId == child->Id(); });
    ASSERT_NE(found, list.end());
    EXPECT_EQ((*found)->parentProcessId, GetCurrentProcessId());
    EXPECT_EQ(kit::ToNarrow((*found)->imageName), "nativeChild.exe");
    const auto own = [](const auto& one) { return one->processId == GetCurrentProcessId(); };
    EXPECT_EQ(std::count_if(list.begin(), list.end(), own), 1);
    EXPECT_EQ(std::count_if(list.begin(), list.end(), [](const auto& one) { return one->processId == 0; }), 0);
}

TEST_P(RealProcesses, TheParentOfAChildIsThisProcess) {
    EXPECT_EQ(Target().GetParentProcessId(), GetCurrentProcessId());
}

TEST_P(RealProcesses, TheIdBehindAHandleIsThatOfTheChild) {
    EXPECT_EQ(Target().ProcessId(), child->Id());
}

TEST_P(RealProcesses, AReadThatFailsHasANegativeStatus) {
    TargetProcess& target = Target();
    auto& native = const_cast<Native&>(target.Access());
    char byte = 0;
    EXPECT_LT(native.ReadMemory(0x10, &byte, 1, nullptr), 0); // page 0
    EXPECT_EQ(native.ReadMemory(target.ListModules(ModuleKindAuto).at(0)->baseAddress, &byte, 1, nullptr), 0);
    EXPECT_EQ(byte, 'M');
}

INSTANTIATE_TEST_SUITE_P(Children, RealProcesses, testing::Values(32, 64), ChildName);

TEST(RealLastStatus, IsTheWordThatTheSystemItselfReads) {
    using Function = uint32_t(WINAPI*)();
    const auto systems = reinterpret_cast<Function>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "RtlGetLastNtStatus")));
    ASSERT_NE(systems, nullptr);
    platform::SetLastStatusValue(0x12345678);
    EXPECT_EQ(systems(), 0x12345678u);
    char byte = 0;
    EXPECT_FALSE(platform::ReadProcessMemory(GetCurrentProcess(), 0x10, &byte, 1, nullptr));
    EXPECT_LT(static_cast<int32_t>(systems()), 0);
    EXPECT_EQ(platform::LastStatusValue(), systems());
}

TEST(RealLastStatus, OfASuccessIsLeftAloneSoThatAClearedOneStays0) {
    platform::SetLastStatusValue(0);
    char byte = 0;
    const char source = 'x';
    EXPECT_TRUE(
        platform::ReadProcessMemory(GetCurrentProcess(), reinterpret_cast<uintptr_t>(&source), &byte, 1, nullptr));
    EXPECT_EQ(platform::LastStatusValue(), 0u);
    EXPECT_EQ(byte, 'x');
}

TEST(RealDevicePath, OfADriveOfThisSystemIsFound) {
    wchar_t device[512] = {};
    ASSERT_NE(QueryDosDeviceW(L"C:", device, 512), 0u);
    const std::wstring path = DevicePathToDosPath(std::wstring(device) + L"\\Dir\\File.txt");
    ASSERT_EQ(path.size(), 15u);
    EXPECT_EQ(path.substr(1), L":\\Dir\\File.txt");
}

TEST(RealRedirection, IsSwitchedOffForA32BitCallerAlone) {
    const CAutoWow64PauseDisable pause;
    EXPECT_EQ(pause.Disabled(), callerIs32Bit);
}

} // namespace
