// Functions of the 64-bit half by name, and statuses as last errors. What was found is kept for the life of the
// process: each test of a search is alone in its own.
#include <array>
#include <cstring>

#include "kit/system/published/processLayouts.h"
#include "kit/system/scriptedProcess/gateHalf.h"
#include "kit/system/scriptedProcess/internals.h"
#include "native/gate.h"

#include <gtest/gtest.h>

namespace {

using namespace scripted;
using Lines = std::vector<std::string>;

class GateResolution : public testing::Test {
protected:
    System& system = Reset();
    Gate& gate = ResetGate();
    GateHalf half;
};

TEST_F(GateResolution, AsksTheLoaderWithFourArguments) {
    half.Build(gate);
    published::AnsiString<uint64_t> asked{};
    std::string text;
    gate.functions[half.AddressOf("LdrGetProcedureAddress")] = [&](const GateArguments& arguments) {
        std::memcpy(&asked, reinterpret_cast<const void*>(arguments.at(1)), sizeof asked);
        text = reinterpret_cast<const char*>(asked.Buffer); // NUL-ended
        const uint64_t address = 0x7FFB12345678;
        uint64_t before = 1;
        std::memcpy(&before, reinterpret_cast<const void*>(arguments.at(3)), sizeof before);
        EXPECT_EQ(before, 0u);
        std::memcpy(reinterpret_cast<void*>(arguments.at(3)), &address, sizeof address);
        return uint64_t{0};
    };
    EXPECT_EQ(GateResolve(0x7FFB00000000, "NtClose"), 0x7FFB12345678u);
    EXPECT_EQ(system.TakeCalls().back(), "GateCall(LdrGetProcedureAddress, 4)");
    ASSERT_EQ(gate.lastArguments.size(), 4u);
    EXPECT_EQ(gate.lastArguments[0], 0x7FFB00000000u);
    EXPECT_EQ(gate.lastArguments[2], 0u); // no ordinal
    EXPECT_EQ(asked.Length, 7u);
    EXPECT_EQ(asked.MaximumLength, 8u);
    EXPECT_EQ(text, "NtClose");
}

TEST_F(GateResolution, TheTextIsToldInSixteenBytesOfWhichFourAreZero) {
    half.Build(gate);
    std::array<uint8_t, 16> told{};
    gate.functions[half.AddressOf("LdrGetProcedureAddress")] = [&](const GateArguments& arguments) {
        std::memcpy(told.data(), reinterpret_cast<const void*>(arguments.at(1)), told.size());
        return uint64_t{procedureNotFound};
    };
    const char name[] = "NtClose";
    GateResolve(1, name);
    std::array<uint8_t, 16> expected = {7, 0, 8, 0, 0, 0, 0, 0};
    const auto address = reinterpret_cast<uintptr_t>(name);
    std::memcpy(expected.data() + 8, &address, sizeof address);
    EXPECT_EQ(told, expected);
}

TEST_F(GateResolution, TheLengthOfANameIsCutTo16Bits) {
    half.Build(gate);
    published::AnsiString<uint64_t> asked{};
    gate.functions[half.AddressOf("LdrGetProcedureAddress")] = [&](const GateArguments& arguments) {
        std::memcpy(&asked, reinterpret_cast<const void*>(arguments.at(1)), sizeof asked);
        return uint64_t{procedureNotFound};
    };
    EXPECT_EQ(GateResolve(1, std::string(0x10005, 'x').c_str()), 0u);
    EXPECT_EQ(asked.Length, 5u);
    EXPECT_EQ(asked.MaximumLength, 6u);
    EXPECT_EQ(GateResolve(1, std::string(0xFFFF, 'x').c_str()), 0u);
    EXPECT_EQ(asked.Length, 0xFFFFu);
    EXPECT_EQ(asked.MaximumLength, 0u);
}

TEST_F(GateResolution, DoesNotLookAtTheStatus) {
    half.Build(gate);
    gate.functions[half.AddressOf("LdrGetProcedureAddress")] = [&](const GateArguments& arguments) {
        const uint64_t address = 0x7FFB12345678;
        std::memcpy(reinterpret_cast<void*>(arguments.at(3)), &address, sizeof address);
        return uint64_t{procedureNotFound}; // and has stored one all the same
    };
    EXPECT_EQ(GateResolve(GateHalf::ntdll, "NtClose"), 0x7FFB12345678u);
}

TEST_F(GateResolution, OfANameThatIsNotThereIs0) {
    half.Build(gate);
    EXPECT_EQ(GateResolve(GateHalf::ntdll, "NtNothing"), 0u);
    EXPECT_EQ(GateResolve(0x1230000, "NtQueryVirtualMemory"), 0u); // nor in another module
    EXPECT_EQ(GateResolve(GateHalf::ntdll, "NtQueryVirtualMemory"), half.AddressOf("NtQueryVirtualMemory"));
}

TEST_F(GateResolution, FindsTheLoadersFunctionOnceAndKeepsIt) {
    half.Build(gate);
    GateResolve(GateHalf::ntdll, "NtQueryVirtualMemory");
    system.TakeCalls();
    GateResolve(GateHalf::ntdll, "NtReadVirtualMemory");
    EXPECT_EQ(system.TakeCalls(), Lines{"GateCall(LdrGetProcedureAddress, 4)"});
}

TEST_F(GateResolution, Is0WithoutTheLoadersFunctionWhichIsLookedForAgain) {
    half.exports = {"NtQueryVirtualMemory"};
    half.Build(gate);
    EXPECT_EQ(GateResolve(GateHalf::ntdll, "NtQueryVirtualMemory"), 0u);
    EXPECT_EQ(system.Count("GateCall"), 0u);
    half.exports = GateHalf().exports;
    half.Build(ResetGate());
    EXPECT_EQ(GateResolve(GateHalf::ntdll, "NtQueryVirtualMemory"), half.AddressOf("NtQueryVirtualMemory"));
}

TEST_F(GateResolution, Is0WhileTheGateIsDisabled) {
    half.Build(gate);
    GateNtdllBase();
    GateEnabled = 0;
    EXPECT_EQ(GateResolve(GateHalf::ntdll, "NtQueryVirtualMemory"), 0u);
}

// Statuses as last errors

TEST_F(GateResolution, AStatusBecomesTheLastErrorByItsLow32Bits) {
    GateRecordStatus(0x12345678C0000005);
    EXPECT_EQ(system.TakeCalls(),
              (Lines{"GetModuleHandleW(ntdll.dll)", "GetProcAddress(ntdll.dll, RtlNtStatusToDosError)",
                     "GetProcAddress(ntdll.dll, RtlSetLastWin32Error)", "RtlNtStatusToDosError(0xc0000005)",
                     "RtlSetLastWin32Error(0x9a5a0005)"}));
    EXPECT_EQ(system.lastError, 0x9A5A0005u);
}

TEST_F(GateResolution, TheTwoFunctionsOfStatusesAreFoundOnce) {
    GateRecordStatus(1);
    system.TakeCalls();
    GateRecordStatus(2);
    EXPECT_EQ(system.TakeCalls(), (Lines{"RtlNtStatusToDosError(0x2)", "RtlSetLastWin32Error(0x5a5a0002)"}));
}

TEST_F(GateResolution, AStatusIsNotRecordedWithoutBothFunctionsWhichAreLookedForAgain) {
    system.lastError = 77;
    for (const std::string gone : {"RtlNtStatusToDosError", "RtlSetLastWin32Error"}) {
        system.missing = {gone};
        GateRecordStatus(0xC0000005);
        EXPECT_EQ(system.lastError, 77u) << gone;
        EXPECT_EQ(system.Count("Rtl"), 0u) << gone;
    }
    system.missing.clear();
    GateRecordStatus(0xC0000005);
    EXPECT_EQ(system.lastError, 0x9A5A0005u);
}

TEST_F(GateResolution, AStatusIsNotRecordedWithoutTheModule) {
    system.missingModules = {"ntdll.dll"};
    system.lastError = 77;
    GateRecordStatus(0xC0000005);
    EXPECT_EQ(system.lastError, 77u);
}

} // namespace
