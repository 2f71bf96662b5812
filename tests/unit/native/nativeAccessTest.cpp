// Memory, queries and thread contexts of a caller that is as wide as the machine.
#include "kit/system/scriptedProcess/nativeFixture.h"
#include "native/caller.h"

namespace {

using namespace scripted;

class NativeAccess : public NativeFixture {
protected:
    // A Native on the target, its construction not among the calls.
    Native& Object() {
        m_native.emplace(process);
        system.TakeCalls();
        return *m_native;
    }

    static constexpr uint64_t high = Caller::is64Bit ? 0x700000000 : 0; // what of a high address reaches the system

private:
    std::optional<Native> m_native;
};

TEST_F(NativeAccess, AReadClearsTheLastStatusThenReadsAndReturnsTheLastStatus) {
    Fill(0x5000, 16);
    Native& native = Object();
    system.lastStatus = accessViolation; // of an earlier call
    EXPECT_EQ(native.ReadMemory(0x5000, buffer.data(), 16, nullptr), STATUS_OF_SUCCESS);
    EXPECT_EQ(system.TakeCalls(),
              (Lines{"SetLastStatusValue(0x0)", "ReadProcessMemory(process 7, 0x5000, buffer, 16, null)"}));
    EXPECT_TRUE(Holds(buffer, 16));
}

TEST_F(NativeAccess, AReadReturnsEveryStatusAsTheSystemLeftIt) {
    Fill(0x5000, 16);
    Native& native = Object();
    for (const auto& statuses : {std::vector<uint32_t>(std::begin(negativeStatuses), std::end(negativeStatuses)),
                                 std::vector<uint32_t>(std::begin(positiveStatuses), std::end(positiveStatuses))}) {
        for (const uint32_t status : statuses) {
            system.byAddress[0x5000] = {status};
            EXPECT_EQ(native.ReadMemory(0x5000, buffer.data(), 16, nullptr), StatusFromWord(status)) << Hex(status);
        }
    }
}

TEST_F(NativeAccess, ThePlaceForTheCountIsHandedOnAsItIs) {
    Fill(0x5000, 16);
    uint64_t count = 0;
    EXPECT_EQ(Object().ReadMemory(0x5000, buffer.data(), 16, &count), STATUS_OF_SUCCESS);
    EXPECT_EQ(count, 16u);
    EXPECT_EQ(system.TakeCalls().back(), "ReadProcessMemory(process 7, 0x5000, buffer, 16, count)");
}

TEST_F(NativeAccess, APartialReadIsToldWithItsCount) {
    Fill(0x5000, 16);
    uint64_t count = 0;
    EXPECT_EQ(Object().ReadMemory(0x5000, buffer.data(), 17, &count), StatusFromWord(partialCopy));
    EXPECT_EQ(count, 16u);
}

TEST_F(NativeAccess, OfAddressAndSizeAReadUsesTheCallersWidth) {
    Object().ReadMemory(0x700005000, buffer.data(), 0x300000010, nullptr);
    const std::string size = std::to_string(Caller::is64Bit ? 0x300000010 : 0x10);
    EXPECT_EQ(system.TakeCalls().back(),
              "ReadProcessMemory(process 7, " + Hex(high + 0x5000) + ", buffer, " + size + ", null)");
}

TEST_F(NativeAccess, AReadOfNothingStillAsks) {
    EXPECT_EQ(Object().ReadMemory(0x5000, buffer.data(), 0, nullptr), STATUS_OF_SUCCESS);
    EXPECT_EQ(system.TakeCalls().back(), "ReadProcessMemory(process 7, 0x5000, buffer, 0, null)");
}

TEST_F(NativeAccess, AQueryOfTheProcessHandsEverythingOn) {
    uint32_t length = 0;
    const uint32_t size = Caller::processBasicInformationSize;
    EXPECT_EQ(Object().QueryProcessInformation(0, buffer.data(), size, &length), STATUS_OF_SUCCESS);
    EXPECT_EQ(length, size);
    EXPECT_EQ(system.TakeCalls(),
              (Lines{"NtQueryInformationProcess(process 7, class 0, buffer, " + std::to_string(size) + ", length)"}));

    EXPECT_EQ(Object().QueryProcessInformation(26, buffer.data(), 3, nullptr), StatusFromWord(lengthMismatch));
    EXPECT_EQ(system.TakeCalls(), (Lines{"NtQueryInformationProcess(process 7, class 26, buffer, 3, null)"}));
}

TEST_F(NativeAccess, AQueryOfAThreadPassesANullLengthAndTheLow32BitsOfTheSize) {
    const uint32_t size = Caller::is64Bit ? 8 : 4; // of a start address
    EXPECT_EQ(Object().QueryThreadInformation(thread, 9, buffer.data(), 0x700000000 + size), STATUS_OF_SUCCESS);
    EXPECT_EQ(system.TakeCalls(),
              (Lines{"NtQueryInformationThread(thread 9, class 9, buffer, " + std::to_string(size) + ", null)"}));
}

TEST_F(NativeAccess, AQueryOfMemoryPassesALengthOfItsOwnAndWhatTheCallersWidthTakes) {
    target->regions = {{high + 0x5000, 0x1000, {}}};
    const uint64_t size = Caller::memoryBasicInformationSize;
    EXPECT_EQ(Object().QueryVirtualMemory(0x700005010, 0, buffer.data(), high + size),
              Caller::is64Bit ? StatusFromWord(lengthMismatch) : STATUS_OF_SUCCESS);
    EXPECT_EQ(system.TakeCalls(), (Lines{"NtQueryVirtualMemory(process 7, " + Hex(high + 0x5010) +
                                         ", class 0, buffer, " + std::to_string(high + size) + ", length)"}));
}

TEST_F(NativeAccess, OfTheSizeOfAQueryOfMemoryA32BitCallerPassesTheLowHalf) {
    target->regions = {{0x5000, 0x1000, {}}};
    const uint64_t size = 0x700000000 + Caller::memoryBasicInformationSize;
    const NtStatus status = Object().QueryVirtualMemory(0x5010, 0, buffer.data(), size);
    EXPECT_EQ(status, Caller::is64Bit ? StatusFromWord(lengthMismatch) : STATUS_OF_SUCCESS);
    EXPECT_EQ(system.TakeCalls(),
              (Lines{"NtQueryVirtualMemory(process 7, 0x5010, class 0, buffer, " +
                     std::to_string(Caller::is64Bit ? size : Caller::memoryBasicInformationSize) + ", length)"}));
}

TEST_F(NativeAccess, AQueryOfTheSystemHandsEverythingOn) {
    system.processList = {{4, 0, WIDE("System")}};
    uint32_t length = 0;
    EXPECT_EQ(Object().QuerySystemInformation(57, nullptr, 0, &length), StatusFromWord(lengthMismatch));
    EXPECT_GT(length, 0u);
    EXPECT_EQ(system.TakeCalls(), (Lines{"NtQuerySystemInformation(system, class 57, null, 0, length)"}));
    EXPECT_EQ(Object().QuerySystemInformation(57, buffer.data(), 80, nullptr), StatusFromWord(lengthMismatch));
    EXPECT_EQ(system.TakeCalls(), (Lines{"NtQuerySystemInformation(system, class 57, buffer, 80, null)"}));
}

TEST_F(NativeAccess, QueriesReturnEveryStatusOfTheirFunction) {
    Native& native = Object();
    for (const uint32_t status : {0xC0000005u, 0x8000000Du, 0x102u, 0x40000003u}) {
        for (const char* const name : {"NtQueryInformationProcess", "NtQueryInformationThread", "NtQueryVirtualMemory",
                                       "NtQuerySystemInformation"}) {
            system.Next(name, {status});
        }
        EXPECT_EQ(native.QueryProcessInformation(0, buffer.data(), 24, nullptr), StatusFromWord(status));
        EXPECT_EQ(native.QueryThreadInformation(thread, 9, buffer.data(), 8), StatusFromWord(status));
        EXPECT_EQ(native.QueryVirtualMemory(0, 0, buffer.data(), 28), StatusFromWord(status));
        EXPECT_EQ(native.QuerySystemInformation(57, buffer.data(), 28, nullptr), StatusFromWord(status));
    }
}

TEST_F(NativeAccess, AMissingFunctionGivesC0000138WithoutACall) {
    system.missing = {"NtQueryInformationProcess", "NtQueryInformationThread", "NtQueryVirtualMemory",
                      "NtQuerySystemInformation"};
    Native& native = Object();
    const auto missing = StatusFromWord(0xC0000138);
    uint32_t length = 77;
    EXPECT_EQ(native.QueryProcessInformation(0, buffer.data(), 24, &length), missing);
    EXPECT_EQ(native.QueryThreadInformation(thread, 9, buffer.data(), 8), missing);
    EXPECT_EQ(native.QueryVirtualMemory(0x5000, 0, buffer.data(), 28), missing);
    EXPECT_EQ(native.QuerySystemInformation(57, buffer.data(), 28, &length), missing);
    EXPECT_EQ(system.TakeCalls(), Lines{});
    EXPECT_EQ(length, 77u);
    EXPECT_TRUE(Holds(buffer, 0));
}

TEST_F(NativeAccess, ANullAddressInTheTableIsAMissingFunctionToo) {
    Native& native = Object();
    GetNativeFunctionTable()["NtQueryInformationProcess"] = nullptr;
    EXPECT_EQ(native.QueryProcessInformation(0, buffer.data(), 24, nullptr), StatusFromWord(0xC0000138));
}

TEST_F(NativeAccess, FunctionsAreLookedUpAtEachCall) {
    Native& native = Object();
    const uint32_t size = Caller::is64Bit ? 8 : 4;
    EXPECT_EQ(native.QueryThreadInformation(thread, 9, buffer.data(), size), STATUS_OF_SUCCESS);
    GetNativeFunctionTable().erase("NtQueryInformationThread");
    EXPECT_EQ(native.QueryThreadInformation(thread, 9, buffer.data(), size), StatusFromWord(0xC0000138));
}

TEST_F(NativeAccess, GetThreadContext32OfA64BitTargetIsASuccessThatHasDoneNothing) {
    EXPECT_EQ(Object().GetThreadContext32(thread, buffer.data()), STATUS_OF_SUCCESS);
    EXPECT_EQ(system.TakeCalls(), Lines{});
    EXPECT_TRUE(Holds(buffer, 0));
}

TEST_F(NativeAccess, GetThreadContext32OfAWow64TargetGoesThroughWow64GetThreadContext) {
    target->isWow64 = 1;
    Native& native = Object();
    system.lastStatus = accessViolation;
    EXPECT_EQ(native.GetThreadContext32(thread, buffer.data()), STATUS_OF_SUCCESS);
    EXPECT_EQ(system.TakeCalls(), (Lines{"SetLastStatusValue(0x0)", "Wow64GetThreadContext(thread 9, context)"}));
    EXPECT_STREQ(buffer.data(), "wow64");
}

TEST_F(NativeAccess, GetThreadContext32ReturnsTheLastStatusWhateverTheFunctionReturned) {
    target->isWow64 = 1;
    Native& native = Object();
    for (const uint32_t status : {0xC0000008u, 0x8000000Du, 0x102u}) {
        system.Next("Wow64GetThreadContext", {status});
        EXPECT_EQ(native.GetThreadContext32(thread, buffer.data()), StatusFromWord(status));
    }
}

TEST_F(NativeAccess, GetThreadContext32WithoutItsFunctionIs0AsWell) {
    target->isWow64 = 1;
    system.missing = {"Wow64GetThreadContext"};
    Native& native = Object();
    system.lastStatus = accessViolation;
    EXPECT_EQ(native.GetThreadContext32(thread, buffer.data()), STATUS_OF_SUCCESS);
    EXPECT_EQ(system.TakeCalls(), Lines{"SetLastStatusValue(0x0)"});
}

TEST_F(NativeAccess, GetThreadContext64IsThePlainFunctionForATargetOfEitherWidth) {
    for (const int32_t isWow64 : {0, 1}) {
        target->isWow64 = isWow64;
        Native& native = Object();
        system.lastStatus = accessViolation;
        EXPECT_EQ(native.GetThreadContext64(thread, buffer.data()), STATUS_OF_SUCCESS);
        EXPECT_EQ(system.TakeCalls(), (Lines{"SetLastStatusValue(0x0)", "GetThreadContext(thread 9, context)"}));
        EXPECT_STREQ(buffer.data(), "native");
    }
    EXPECT_EQ(Object().GetThreadContext64(process, buffer.data()), StatusFromWord(invalidHandle));
}

} // namespace
