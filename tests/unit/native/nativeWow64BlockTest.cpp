// PEB and TEB as a 32-bit caller on a 64-bit machine finds them.
#include "kit/system/scriptedProcess/wow64Fixture.h"

namespace {

using namespace scripted;

class BlockOfWow64 : public Wow64Fixture {
protected:
    static std::string Read64(uint64_t address, size_t size, const char* to = "buffer") {
        return "NtWow64ReadVirtualMemory64(process 7, " + Hex(address) + ", " + to + ", " + std::to_string(size) +
               ", count)";
    }
    static std::string Read32(uint64_t address, size_t size) {
        return "ReadProcessMemory(process 7, " + Hex(address) + ", buffer, " + std::to_string(size) + ", null)";
    }

    const std::string query64 = "NtWow64QueryInformationProcess64(process 7, class 0, buffer, 48, length)";
    const std::string query32 = "NtQueryInformationProcess(process 7, class 0, buffer, 24, length)";
    const std::string threadQuery32 = "NtQueryInformationThread(thread 9, class 0, buffer, 28, length)";
    static constexpr uint64_t peb32Result = 0xFFFFFFFF80310000; // sign-extended
};

// ReadPeb64

TEST_F(BlockOfWow64, ReadPeb64FindsThePebIn48BytesAndReads904ForATargetOfEitherWidth) {
    Fill(peb64, 0x1000);
    for (const int32_t isWow64 : {0, 1}) {
        target->isWow64 = isWow64;
        buffer.fill(0);
        EXPECT_EQ(Object().ReadPeb64(buffer.data()), peb64);
        EXPECT_EQ(system.TakeCalls(), (Lines{query64, Read64(peb64, 904)}));
        EXPECT_TRUE(Holds(buffer, 904));
    }
}

TEST_F(BlockOfWow64, ReadPeb64Is0WhenTheReadFails) {
    NativeWow64& native = Object();
    for (const uint32_t status : negativeStatuses) {
        system.byAddress[peb64] = {status};
        EXPECT_EQ(native.ReadPeb64(buffer.data()), 0u) << Hex(status);
    }
}

TEST_F(BlockOfWow64, ReadPeb64IsTheAddressWhenTheReadGivesAPositiveStatus) {
    Fill(peb64, 0x1000);
    NativeWow64& native = Object();
    for (const uint32_t status : positiveStatuses) {
        system.byAddress[peb64] = {status, true};
        EXPECT_EQ(native.ReadPeb64(buffer.data()), peb64) << Hex(status);
    }
}

TEST_F(BlockOfWow64, ReadPeb64TestsTheReturnedLengthOfItsQueryAndNotTheStatus) {
    Fill(peb64, 0x1000);
    NativeWow64& native = Object();
    system.Next("NtWow64QueryInformationProcess64", {accessViolation, true}); // fails, and tells a length all the same
    EXPECT_EQ(native.ReadPeb64(buffer.data()), peb64);
    system.Next("NtWow64QueryInformationProcess64", {0, false}); // succeeds, and tells none
    system.TakeCalls();
    EXPECT_EQ(native.ReadPeb64(buffer.data()), 0u);
    EXPECT_EQ(system.TakeCalls(), Lines{query64});
}

TEST_F(BlockOfWow64, ReadPeb64HandsANullDestinationToTheReadAndGivesTheAddressOnlyIfThatSucceeds) {
    Fill(peb64, 0x1000);
    NativeWow64& native = Object();
    EXPECT_EQ(native.ReadPeb64(nullptr), 0u);
    EXPECT_EQ(system.TakeCalls(), (Lines{query64, Read64(peb64, 904, "null")}));
    system.byAddress[peb64] = {0};
    EXPECT_EQ(native.ReadPeb64(nullptr), peb64);
}

TEST_F(BlockOfWow64, ReadPeb64Is0WithoutEitherOfItsFunctions) {
    Fill(peb64, 0x1000);
    system.missing = {"NtWow64QueryInformationProcess64"};
    EXPECT_EQ(Object().ReadPeb64(buffer.data()), 0u);
    EXPECT_EQ(system.TakeCalls(), Lines{});

    GetNativeFunctionTable().clear();
    NativeTableLoaded = false;
    system.missing = {"NtWow64ReadVirtualMemory64"};
    EXPECT_EQ(Object().ReadPeb64(buffer.data()), 0u);
    EXPECT_EQ(system.TakeCalls(), Lines{query64});
}

// ReadPeb32

TEST_F(BlockOfWow64, ReadPeb32OfA64BitTargetIs0WithoutAQuery) {
    target->isWow64 = 0;
    EXPECT_EQ(Object().ReadPeb32(buffer.data()), 0u);
    EXPECT_EQ(system.TakeCalls(), Lines{});
}

TEST_F(BlockOfWow64, ReadPeb32FindsThePebByThePlainQueryAndReads592) {
    Fill(peb32, 0x1000);
    EXPECT_EQ(Object().ReadPeb32(buffer.data()), peb32Result);
    EXPECT_EQ(system.TakeCalls(), (Lines{query32, Read32(peb32, 592)}));
    EXPECT_TRUE(Holds(buffer, 592));
}

TEST_F(BlockOfWow64, ReadPeb32ReturnsTheAddressAlsoWhenTheReadFailed) {
    EXPECT_EQ(Object().ReadPeb32(buffer.data()), peb32Result);
    EXPECT_EQ(system.Count("ReadProcessMemory"), 1u);
}

TEST_F(BlockOfWow64, ReadPeb32WithoutADestinationQueriesTheAddressOnly) {
    EXPECT_EQ(Object().ReadPeb32(nullptr), peb32Result);
    EXPECT_EQ(system.TakeCalls(), Lines{query32});
}

TEST_F(BlockOfWow64, ReadPeb32Is0WhenTheQueryFailedOrIsMissing) {
    Fill(peb32, 0x1000);
    NativeWow64& native = Object();
    for (const uint32_t status : negativeStatuses) {
        system.Next("NtQueryInformationProcess", {status, true}); // though it has told an address
        EXPECT_EQ(native.ReadPeb32(buffer.data()), 0u) << Hex(status);
    }
    GetNativeFunctionTable().erase("NtQueryInformationProcess");
    EXPECT_EQ(native.ReadPeb32(buffer.data()), 0u);
    EXPECT_EQ(system.Count("ReadProcessMemory"), 0u);
}

TEST_F(BlockOfWow64, ReadPeb32GoesOnWithAPositiveStatus) {
    system.Next("NtQueryInformationProcess", {0x102, true});
    EXPECT_EQ(Object().ReadPeb32(buffer.data()), peb32Result);
    EXPECT_EQ(system.Count("ReadProcessMemory"), 1u);
}

// ReadTeb64

TEST_F(BlockOfWow64, ReadTeb64AsksThroughTheGateIn48BytesAndReads6200) {
    Fill(teb64, 0x2000);
    EXPECT_EQ(Object().ReadTeb64(thread, buffer.data()), teb64);
    EXPECT_EQ(TakeCallsBehindTheSearch(), (Lines{"GateCall(NtQueryInformationThread, 5)", Read64(teb64, 6200)}));
    ASSERT_EQ(gate.lastArguments.size(), 5u);
    EXPECT_EQ(gate.lastArguments[0], Widened(thread));
    EXPECT_EQ(gate.lastArguments[1], 0u);
    EXPECT_EQ(gate.lastArguments[3], 48u);
    EXPECT_NE(gate.lastArguments[4], 0u);
    EXPECT_TRUE(Holds(buffer, 6200));
}

TEST_F(BlockOfWow64, ReadTeb64TestsTheReturnedLengthOfItsQueryAndNotTheStatus) {
    Fill(teb64, 0x2000);
    NativeWow64& native = Object();
    system.Next("64-bit NtQueryInformationThread", {accessViolation, true});
    EXPECT_EQ(native.ReadTeb64(thread, buffer.data()), teb64);
    system.Next("64-bit NtQueryInformationThread", {0, false});
    EXPECT_EQ(native.ReadTeb64(thread, buffer.data()), 0u);
    EXPECT_EQ(system.Count("NtWow64ReadVirtualMemory64"), 1u);
}

TEST_F(BlockOfWow64, ReadTeb64Is0WhenTheReadFails) {
    NativeWow64& native = Object();
    for (const uint32_t status : negativeStatuses) {
        system.byAddress[teb64] = {status};
        EXPECT_EQ(native.ReadTeb64(thread, buffer.data()), 0u) << Hex(status);
    }
    for (const uint32_t status : positiveStatuses) {
        system.byAddress[teb64] = {status};
        EXPECT_EQ(native.ReadTeb64(thread, buffer.data()), teb64) << Hex(status);
    }
}

TEST_F(BlockOfWow64, ReadTeb64HandsANullDestinationToTheRead) {
    Fill(teb64, 0x2000);
    NativeWow64& native = Object();
    EXPECT_EQ(native.ReadTeb64(thread, nullptr), 0u);
    EXPECT_EQ(TakeCallsBehindTheSearch().back(), Read64(teb64, 6200, "null"));
    system.byAddress[teb64] = {0};
    EXPECT_EQ(native.ReadTeb64(thread, nullptr), teb64);
}

TEST_F(BlockOfWow64, ReadTeb64WithoutItsFunctionIs0WithTheLastStatusC0000138) {
    half.hidden = {"NtQueryInformationThread"};
    NativeWow64& native = Object();
    EXPECT_EQ(native.ReadTeb64(thread, buffer.data()), 0u);
    EXPECT_EQ(system.lastStatus, 0xC0000138u);
    EXPECT_EQ(TakeCallsBehindTheSearch(), Lines{"SetLastStatusValue(0xc0000138)"});
}

// ReadTeb32

TEST_F(BlockOfWow64, ReadTeb32OfA64BitTargetIs0WithoutAQuery) {
    target->isWow64 = 0;
    EXPECT_EQ(Object().ReadTeb32(thread, buffer.data()), 0u);
    EXPECT_EQ(system.TakeCalls(), Lines{});
}

TEST_F(BlockOfWow64, ReadTeb32AsksByTheTableIn28BytesReads4096AndGivesTheAddressZeroExtended) {
    Fill(teb32, 0x1000);
    EXPECT_EQ(Object().ReadTeb32(thread, buffer.data()), teb32);
    EXPECT_EQ(system.TakeCalls(), (Lines{threadQuery32, Read32(teb32, 4096)}));
    EXPECT_TRUE(Holds(buffer, 4096));
}

TEST_F(BlockOfWow64, ReadTeb32ReturnsTheAddressAlsoWhenTheReadFailed) {
    EXPECT_EQ(Object().ReadTeb32(thread, buffer.data()), teb32);
    EXPECT_EQ(system.Count("ReadProcessMemory"), 1u);
}

TEST_F(BlockOfWow64, ReadTeb32WithoutADestinationQueriesTheAddressOnly) {
    EXPECT_EQ(Object().ReadTeb32(thread, nullptr), teb32);
    EXPECT_EQ(system.TakeCalls(), Lines{threadQuery32});
}

TEST_F(BlockOfWow64, ReadTeb32GoesOnWithAPositiveStatus) {
    Fill(teb32, 0x1000);
    NativeWow64& native = Object();
    for (const uint32_t status : positiveStatuses) {
        system.Next("NtQueryInformationThread", {status, true});
        EXPECT_EQ(native.ReadTeb32(thread, buffer.data()), teb32) << Hex(status);
    }
    EXPECT_EQ(system.Count(Read32(teb32, 4096)), std::size(positiveStatuses));
}

TEST_F(BlockOfWow64, ReadTeb32Is0WhenTheQueryFailedOrIsMissing) {
    NativeWow64& native = Object();
    for (const uint32_t status : negativeStatuses) {
        system.Next("NtQueryInformationThread", {status});
        EXPECT_EQ(native.ReadTeb32(thread, buffer.data()), 0u) << Hex(status);
    }
    GetNativeFunctionTable().erase("NtQueryInformationThread");
    EXPECT_EQ(native.ReadTeb32(thread, buffer.data()), 0u);
    EXPECT_EQ(system.Count("ReadProcessMemory"), 0u);
}

} // namespace
