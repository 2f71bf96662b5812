// The variant for a 32-bit caller on a 64-bit machine.
#include "kit/system/scriptedProcess/wow64Fixture.h"

namespace {

using namespace scripted;

class NativeOfWow64 : public Wow64Fixture {};

// Memory

TEST_F(NativeOfWow64, AReadPassesAddressAndSizeWholeAndAPlaceForTheCountOfItsOwn) {
    Fill(0x700005000, 16);
    EXPECT_EQ(Object().ReadMemory(0x700005000, buffer.data(), 16, nullptr), STATUS_OF_SUCCESS);
    EXPECT_EQ(system.TakeCalls(), Lines{"NtWow64ReadVirtualMemory64(process 7, 0x700005000, buffer, 16, count)"});
    EXPECT_TRUE(Holds(buffer, 16));

    Object().ReadMemory(0x700005000, buffer.data(), 0x300000010, nullptr);
    EXPECT_EQ(system.TakeCalls(),
              Lines{"NtWow64ReadVirtualMemory64(process 7, 0x700005000, buffer, 12884901904, count)"});
}

TEST_F(NativeOfWow64, AReadStoresTheCountWhereTheCallerWantsIt) {
    Fill(0x700005000, 16);
    uint64_t count = 0;
    EXPECT_EQ(Object().ReadMemory(0x700005000, buffer.data(), 20, &count), StatusFromWord(partialCopy));
    EXPECT_EQ(count, 16u);
}

TEST_F(NativeOfWow64, AReadReturnsTheStatusOfTheFunctionAndLeavesTheLastStatusAlone) {
    NativeWow64& native = Object();
    system.lastStatus = 0x1234;
    for (const uint32_t status : negativeStatuses) {
        system.Next("NtWow64ReadVirtualMemory64", {status});
        EXPECT_EQ(native.ReadMemory(0x5000, buffer.data(), 16, nullptr), StatusFromWord(status));
    }
    for (const uint32_t status : positiveStatuses) {
        system.Next("NtWow64ReadVirtualMemory64", {status});
        EXPECT_EQ(native.ReadMemory(0x5000, buffer.data(), 16, nullptr), StatusFromWord(status));
    }
    EXPECT_EQ(system.lastStatus, 0x1234u);
}

TEST_F(NativeOfWow64, AReadWithoutItsFunctionIsC0000138) {
    system.missing = {"NtWow64ReadVirtualMemory64"};
    EXPECT_EQ(Object().ReadMemory(0x5000, buffer.data(), 16, nullptr), StatusFromWord(0xC0000138));
    EXPECT_EQ(system.TakeCalls(), Lines{});
}

// Queries of process and system

TEST_F(NativeOfWow64, AQueryOfTheProcessGoesToTheWow64Function) {
    uint32_t length = 0;
    EXPECT_EQ(Object().QueryProcessInformation(0, buffer.data(), 48, &length), STATUS_OF_SUCCESS);
    EXPECT_EQ(length, 48u);
    EXPECT_EQ(system.TakeCalls(), Lines{"NtWow64QueryInformationProcess64(process 7, class 0, buffer, 48, length)"});
}

TEST_F(NativeOfWow64, AQueryOfTheProcessWithoutItsFunctionIsC0000138) {
    system.missing = {"NtWow64QueryInformationProcess64"};
    EXPECT_EQ(Object().QueryProcessInformation(0, buffer.data(), 48, nullptr), StatusFromWord(0xC0000138));
    EXPECT_EQ(system.TakeCalls(), Lines{});
}

TEST_F(NativeOfWow64, AQueryOfTheSystemIsThatOfTheBase) {
    Object().QuerySystemInformation(57, nullptr, 0, nullptr);
    EXPECT_EQ(system.TakeCalls(), Lines{"NtQuerySystemInformation(system, class 57, null, 0, null)"});
}

// Queries through the gate

TEST_F(NativeOfWow64, AQueryOfAThreadGoesThroughTheGateWithFiveArgumentsAndANullLength) {
    target->isWow64 = 0; // a start address of 8 bytes
    system.threads[0].start = 0x7FF612345678;
    EXPECT_EQ(Object().QueryThreadInformation(thread, 9, buffer.data(), 8), STATUS_OF_SUCCESS);
    EXPECT_EQ(TakeCallsBehindTheSearch(), Lines{"GateCall(NtQueryInformationThread, 5)"});
    EXPECT_EQ(gate.lastArguments, (GateArguments{Widened(thread), 9, Widened(buffer.data()), 8, 0}));
    uint64_t start = 0;
    std::memcpy(&start, buffer.data(), sizeof start);
    EXPECT_EQ(start, 0x7FF612345678u);
}

TEST_F(NativeOfWow64, AQueryOfMemoryGoesThroughTheGateWithSixArgumentsAddressAndSizeWhole) {
    target->regions = {{0x700005000, 0x1000, {}}};
    EXPECT_EQ(Object().QueryVirtualMemory(0x700005010, 0, buffer.data(), 48), STATUS_OF_SUCCESS);
    EXPECT_EQ(TakeCallsBehindTheSearch(), Lines{"GateCall(NtQueryVirtualMemory, 6)"});
    EXPECT_EQ(gate.lastArguments, (GateArguments{Widened(process), 0x700005010, 0, Widened(buffer.data()), 48, 0}));

    Object().QueryVirtualMemory(0x5000, 2, buffer.data(), 0x300000010);
    EXPECT_EQ(gate.lastArguments, (GateArguments{Widened(process), 0x5000, 2, Widened(buffer.data()), 0x300000010, 0}));
}

TEST_F(NativeOfWow64, QueriesThroughTheGateReturnItsStatus) {
    NativeWow64& native = Object();
    for (const uint32_t status : {0xC0000005u, 0x8000000Du, 0x102u, 0x40000003u}) {
        system.Next("64-bit NtQueryInformationThread", {status});
        system.Next("64-bit NtQueryVirtualMemory", {status});
        system.Next("64-bit NtGetContextThread", {status});
        EXPECT_EQ(native.QueryThreadInformation(thread, 9, buffer.data(), 8), StatusFromWord(status));
        EXPECT_EQ(native.QueryVirtualMemory(0, 0, buffer.data(), 48), StatusFromWord(status));
        EXPECT_EQ(native.GetThreadContext64(thread, buffer.data()), StatusFromWord(status));
    }
}

TEST_F(NativeOfWow64, AFunctionOfTheGateIsLookedForOnceAndThenCalledByItsAddress) {
    NativeWow64& native = Object();
    native.QueryThreadInformation(thread, 9, buffer.data(), 8);
    system.TakeCalls();
    native.QueryThreadInformation(thread, 9, buffer.data(), 8);
    EXPECT_EQ(system.TakeCalls(), Lines{"GateCall(NtQueryInformationThread, 5)"});
}

TEST_F(NativeOfWow64, AFailedResolutionIsKeptForEachOperationByItself) {
    half.hidden = {"NtQueryInformationThread", "NtQueryVirtualMemory", "NtGetContextThread"};
    NativeWow64& native = Object();
    EXPECT_EQ(native.QueryThreadInformation(thread, 9, buffer.data(), 8), StatusFromWord(0xC0000138));
    EXPECT_EQ(native.QueryVirtualMemory(0, 0, buffer.data(), 48), StatusFromWord(0xC0000138));
    half.hidden.clear();
    system.TakeCalls();
    EXPECT_EQ(native.QueryThreadInformation(thread, 9, buffer.data(), 8), StatusFromWord(0xC0000138));
    EXPECT_EQ(native.QueryVirtualMemory(0, 0, buffer.data(), 48), StatusFromWord(0xC0000138));
    EXPECT_EQ(system.TakeCalls(), Lines{});

    // The other two operations have not asked yet; ReadTeb64 wants the same function as QueryThreadInformation.
    EXPECT_EQ(native.GetThreadContext64(thread, buffer.data()), STATUS_OF_SUCCESS);
    Fill(teb64, 0x2000);
    EXPECT_EQ(native.ReadTeb64(thread, buffer.data()), teb64);
}

TEST_F(NativeOfWow64, WithoutA64BitNtdllTheGatesOperationsAreMissing) {
    ResetGate();
    half.modules.erase(half.modules.begin() + 1);
    half.Build(gate);
    NativeWow64& native = Object();
    EXPECT_EQ(native.QueryThreadInformation(thread, 9, buffer.data(), 8), StatusFromWord(0xC0000138));
    EXPECT_EQ(native.QueryVirtualMemory(0, 0, buffer.data(), 48), StatusFromWord(0xC0000138));
    EXPECT_EQ(native.GetThreadContext64(thread, buffer.data()), StatusFromWord(0xC0000138));
    EXPECT_EQ(native.ReadTeb64(thread, buffer.data()), 0u);
    EXPECT_EQ(system.Count("GateCall"), 0u);
}

// Thread contexts

TEST_F(NativeOfWow64, GetThreadContext32OfAWow64TargetIsThePlainFunction) {
    NativeWow64& native = Object();
    system.lastStatus = accessViolation;
    EXPECT_EQ(native.GetThreadContext32(thread, buffer.data()), STATUS_OF_SUCCESS);
    EXPECT_EQ(system.TakeCalls(), (Lines{"SetLastStatusValue(0x0)", "GetThreadContext(thread 9, context)"}));
    EXPECT_STREQ(buffer.data(), "native");
    EXPECT_EQ(native.GetThreadContext32(process, buffer.data()), StatusFromWord(invalidHandle));
}

TEST_F(NativeOfWow64, GetThreadContext32OfA64BitTargetIsRefused) {
    target->isWow64 = 0;
    EXPECT_EQ(Object().GetThreadContext32(thread, buffer.data()), StatusFromWord(0xC00000BB));
    EXPECT_EQ(system.TakeCalls(), Lines{});
}

TEST_F(NativeOfWow64, GetThreadContext64GoesThroughTheGateWithTwoArguments) {
    EXPECT_EQ(Object().GetThreadContext64(thread, buffer.data()), STATUS_OF_SUCCESS);
    EXPECT_EQ(TakeCallsBehindTheSearch(), Lines{"GateCall(NtGetContextThread, 2)"});
    EXPECT_EQ(gate.lastArguments, (GateArguments{Widened(thread), Widened(buffer.data())}));
    EXPECT_STREQ(buffer.data(), "gate64");
}

TEST_F(NativeOfWow64, GetThreadContext64WithoutItsFunctionIsC0000138) {
    half.hidden = {"NtGetContextThread"};
    EXPECT_EQ(Object().GetThreadContext64(thread, buffer.data()), StatusFromWord(0xC0000138));
    EXPECT_EQ(TakeCallsBehindTheSearch(), Lines{});
}

} // namespace
