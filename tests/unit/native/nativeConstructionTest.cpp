// What a Native of this program's caller knows after its construction.
#include <tuple>

#include "kit/system/scriptedProcess/nativeFixture.h"
#include "native/caller.h"

namespace {

using namespace scripted;

class NativeConstruction : public NativeFixture {};

TEST_F(NativeConstruction, AsksForTheCallerAndThenForTheTarget) {
    const Native native(process);
    const auto calls = system.TakeCalls();
    EXPECT_EQ(Lines(calls.end() - 2, calls.end()), (Lines{"IsWow64Process(self)", "IsWow64Process(process 7)"}));
}

TEST_F(NativeConstruction, TwoWow64ProcessesAreTheCrossing0) {
    system.callerIsWow64 = 1;
    target->isWow64 = 1;
    EXPECT_EQ(NativeFields(Native(process)), NativeFields(CrossingWow64ToWow64, true, true, false, false));
    EXPECT_EQ(CrossingWow64ToWow64, 0u);
}

TEST_F(NativeConstruction, Two64BitProcessesAreTheCrossing1) {
    EXPECT_EQ(NativeFields(Native(process)), NativeFields(CrossingNativeToNative, false, false, false, false));
    EXPECT_EQ(CrossingNativeToNative, 1u);
}

TEST_F(NativeConstruction, AWow64CallerAndA64BitTargetAreTheCrossing2) {
    system.callerIsWow64 = 1;
    EXPECT_EQ(NativeFields(Native(process)), NativeFields(CrossingWow64ToNative, true, false, false, true));
    EXPECT_EQ(CrossingWow64ToNative, 2u);
}

TEST_F(NativeConstruction, A64BitCallerAndAWow64TargetAreTheCrossing3) {
    target->isWow64 = 1;
    EXPECT_EQ(NativeFields(Native(process)), NativeFields(CrossingNativeToWow64, false, true, false, true));
    EXPECT_EQ(CrossingNativeToWow64, 3u);
}

TEST_F(NativeConstruction, OnlyAFlagOfExactly1CountsAsWow64) {
    for (const int32_t flag : {2, -1, 0x100}) {
        system.callerIsWow64 = 1;
        target->isWow64 = flag;
        EXPECT_EQ(NativeFields(Native(process)), NativeFields(CrossingWow64ToNative, true, false, false, true)) << flag;
        system.callerIsWow64 = flag;
        target->isWow64 = 1;
        EXPECT_EQ(NativeFields(Native(process)), NativeFields(CrossingNativeToWow64, false, true, false, true)) << flag;
    }
}

TEST_F(NativeConstruction, AFlagThatIsNeither0Nor1MakesCallerAndTargetDifferEvenFromItsEqual) {
    for (const int32_t flag : {2, -1, 0x100}) {
        for (const auto& [self, other] : {std::pair{flag, flag}, {flag, 0}, {0, flag}}) {
            system.callerIsWow64 = self;
            target->isWow64 = other;
            EXPECT_EQ(NativeFields(Native(process)), NativeFields(CrossingNativeToWow64, false, false, false, true))
                << self << " " << other;
        }
    }
}

TEST_F(NativeConstruction, ATargetWhoseQueryFailsCountsAs64Bit) {
    target->isWow64 = 1;
    target->wow64QueryFails = true;
    EXPECT_EQ(NativeFields(Native(process)), NativeFields(CrossingNativeToNative, false, false, false, false));
}

TEST_F(NativeConstruction, ACallerWhoseQueryFailsCountsAs64Bit) {
    system.callerIsWow64 = 1;
    system.callerWow64QueryFails = true;
    target->isWow64 = 1;
    EXPECT_EQ(NativeFields(Native(process)), NativeFields(CrossingNativeToWow64, false, true, false, true));
}

TEST_F(NativeConstruction, NeitherTheObjectNorItsEndClosesTheHandle) {
    { const Native native(process); }
    EXPECT_EQ(system.Count("CloseHandle"), 0u);
    EXPECT_EQ(system.handles.count(process), 1u);
}

} // namespace
