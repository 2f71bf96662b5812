// The variant for a 32-bit machine.
#include "native/x86Native.h"

#include "kit/system/scriptedProcess/nativeFixture.h"

namespace {

using namespace scripted;

class NativeOfX86 : public NativeFixture {
protected:
    void SetUp() override {
        NativeFixture::SetUp();
        system.architecture = 0;
    }

    x86Native& Object() {
        m_object = std::make_unique<x86Native>(process);
        system.TakeCalls();
        return *m_object;
    }

    static std::string Read(uint64_t address, size_t size) {
        return "ReadProcessMemory(process 7, " + Hex(address) + ", buffer, " + std::to_string(size) + ", null)";
    }

    const std::string processQuery = "NtQueryInformationProcess(process 7, class 0, buffer, 24, length)";
    const std::string threadQuery = "NtQueryInformationThread(thread 9, class 0, buffer, 28, length)";
    static constexpr uint64_t peb32Result = 0xFFFFFFFF80310000; // sign-extended

private:
    std::unique_ptr<x86Native> m_object;
};

TEST_F(NativeOfX86, ClaimsThatCallerAndTargetAreWow64WithoutAsking) {
    target->wow64QueryFails = true;
    const x86Native native(process);
    EXPECT_EQ(NativeFields(native), NativeFields(CrossingWow64ToWow64, true, true, true, false));
    EXPECT_EQ(system.Count("IsWow64Process"), 0u);
    EXPECT_EQ(system.Count("GetProcAddress"), 35u);
}

TEST_F(NativeOfX86, RunsWithoutTheWow64NamesSinceNoneOfItsOperationsLooksThemUp) {
    system.missing = {"NtWow64QueryInformationProcess64",
                      "NtWow64ReadVirtualMemory64",
                      "NtWow64WriteVirtualMemory64",
                      "Wow64GetThreadContext",
                      "Wow64SetThreadContext",
                      "Wow64SuspendThread"};
    Fill(peb32, 0x1000);
    Fill(teb32, 0x1000);
    target->regions = {{0x5000, 0x1000, {}}};
    x86Native& native = Object();
    EXPECT_EQ(native.ReadMemory(peb32, buffer.data(), 16, nullptr), STATUS_OF_SUCCESS);
    EXPECT_EQ(native.QueryProcessInformation(0, buffer.data(), 24, nullptr), STATUS_OF_SUCCESS);
    EXPECT_EQ(native.QueryThreadInformation(thread, 9, buffer.data(), 4), STATUS_OF_SUCCESS);
    EXPECT_EQ(native.QueryVirtualMemory(0x5000, 0, buffer.data(), 28), STATUS_OF_SUCCESS);
    EXPECT_EQ(native.QueryVirtualMemory32(0x5000, 0, buffer.data(), 28), STATUS_OF_SUCCESS);
    EXPECT_EQ(native.QuerySystemInformation(57, nullptr, 0, nullptr), STATUS_OF_SUCCESS); // an empty list
    EXPECT_EQ(native.GetThreadContext32(thread, buffer.data()), STATUS_OF_SUCCESS);
    EXPECT_EQ(native.ReadPeb32(buffer.data()), peb32Result);
    EXPECT_EQ(native.ReadTeb32(thread, buffer.data()), teb32);
}

TEST_F(NativeOfX86, RefusesThe64BitPeb) {
    EXPECT_EQ(Object().ReadPeb64(buffer.data()), 0u);
    EXPECT_EQ(system.TakeCalls(), Lines{"SetLastStatusValue(0xc00000bb)"});
    EXPECT_EQ(system.lastStatus, 0xC00000BBu);
}

TEST_F(NativeOfX86, RefusesThe64BitTeb) {
    EXPECT_EQ(Object().ReadTeb64(thread, buffer.data()), 0u);
    EXPECT_EQ(system.TakeCalls(), Lines{"SetLastStatusValue(0xc00000bb)"});
    EXPECT_EQ(system.lastStatus, 0xC00000BBu);
}

TEST_F(NativeOfX86, RefusesThe64BitContext) {
    EXPECT_EQ(Object().GetThreadContext64(thread, buffer.data()), StatusFromWord(0xC00000BB));
    EXPECT_EQ(system.TakeCalls(), Lines{});
}

TEST_F(NativeOfX86, ReadPeb32FindsThePebByThePlainQueryAndReads592) {
    Fill(peb32, 0x1000);
    EXPECT_EQ(Object().ReadPeb32(buffer.data()), peb32Result);
    EXPECT_EQ(system.TakeCalls(), (Lines{processQuery, Read(peb32, 592)}));
    EXPECT_TRUE(Holds(buffer, 592));
}

TEST_F(NativeOfX86, ReadPeb32WithoutADestinationQueriesTheAddressOnly) {
    EXPECT_EQ(Object().ReadPeb32(nullptr), peb32Result);
    EXPECT_EQ(system.TakeCalls(), Lines{processQuery});
}

TEST_F(NativeOfX86, ReadPeb32ReturnsTheAddressAlsoWhenTheReadFailedAnd0WhenTheQueryDid) {
    x86Native& native = Object();
    EXPECT_EQ(native.ReadPeb32(buffer.data()), peb32Result);
    for (const uint32_t status : negativeStatuses) {
        system.Next("NtQueryInformationProcess", {status, true}); // though it has told an address
        EXPECT_EQ(native.ReadPeb32(buffer.data()), 0u) << Hex(status);
    }
    EXPECT_EQ(system.Count("ReadProcessMemory"), 1u);
    GetNativeFunctionTable().erase("NtQueryInformationProcess");
    EXPECT_EQ(native.ReadPeb32(buffer.data()), 0u);
}

TEST_F(NativeOfX86, ReadPeb32GoesOnWithAPositiveStatus) {
    x86Native& native = Object();
    for (const uint32_t status : positiveStatuses) {
        system.Next("NtQueryInformationProcess", {status, true});
        EXPECT_EQ(native.ReadPeb32(buffer.data()), peb32Result) << Hex(status);
    }
    EXPECT_EQ(system.Count(Read(peb32, 592)), std::size(positiveStatuses));
}

TEST_F(NativeOfX86, ReadTeb32AsksIn28BytesReads4096AndGivesTheAddressZeroExtended) {
    Fill(teb32, 0x1000);
    EXPECT_EQ(Object().ReadTeb32(thread, buffer.data()), teb32);
    EXPECT_EQ(system.TakeCalls(), (Lines{threadQuery, Read(teb32, 4096)}));
    EXPECT_TRUE(Holds(buffer, 4096));
}

TEST_F(NativeOfX86, ReadTeb32WithoutADestinationQueriesTheAddressOnly) {
    EXPECT_EQ(Object().ReadTeb32(thread, nullptr), teb32);
    EXPECT_EQ(system.TakeCalls(), Lines{threadQuery});
}

TEST_F(NativeOfX86, ReadTeb32ReturnsTheAddressAlsoWhenTheReadFailed) {
    EXPECT_EQ(Object().ReadTeb32(thread, buffer.data()), teb32);
    EXPECT_EQ(system.TakeCalls(), (Lines{threadQuery, Read(teb32, 4096)}));
}

TEST_F(NativeOfX86, ReadTeb32GoesOnWithAPositiveStatus) {
    x86Native& native = Object();
    for (const uint32_t status : positiveStatuses) {
        system.Next("NtQueryInformationThread", {status, true});
        EXPECT_EQ(native.ReadTeb32(thread, buffer.data()), teb32) << Hex(status);
    }
    EXPECT_EQ(system.Count(Read(teb32, 4096)), std::size(positiveStatuses));
}

TEST_F(NativeOfX86, ReadTeb32Is0WhenTheQueryFailedOrIsMissing) {
    x86Native& native = Object();
    for (const uint32_t status : negativeStatuses) {
        system.Next("NtQueryInformationThread", {status});
        EXPECT_EQ(native.ReadTeb32(thread, buffer.data()), 0u) << Hex(status);
    }
    EXPECT_EQ(native.ReadTeb32(process, buffer.data()), 0u); // a bad thread handle
    GetNativeFunctionTable().erase("NtQueryInformationThread");
    EXPECT_EQ(native.ReadTeb32(thread, buffer.data()), 0u);
    EXPECT_EQ(system.Count("ReadProcessMemory"), 0u);
}

TEST_F(NativeOfX86, GetThreadContext32IsThePlainFunctionWithTheLastStatus) {
    x86Native& native = Object();
    system.lastStatus = accessViolation;
    EXPECT_EQ(native.GetThreadContext32(thread, buffer.data()), STATUS_OF_SUCCESS);
    EXPECT_EQ(system.TakeCalls(), (Lines{"SetLastStatusValue(0x0)", "GetThreadContext(thread 9, context)"}));
    system.Next("GetThreadContext", {0x8000000D});
    EXPECT_EQ(native.GetThreadContext32(thread, buffer.data()), StatusFromWord(0x8000000D));
}

TEST_F(NativeOfX86, QueryVirtualMemory32GoesToTheTablesFunction) {
    target->regions = {{0x5000, 0x1000, {}}};
    EXPECT_EQ(Object().QueryVirtualMemory32(0x5010, 0, buffer.data(), 28), STATUS_OF_SUCCESS);
    EXPECT_EQ(system.TakeCalls(), Lines{"NtQueryVirtualMemory(process 7, 0x5010, class 0, buffer, 28, length)"});
    GetNativeFunctionTable().erase("NtQueryVirtualMemory");
    EXPECT_EQ(Object().QueryVirtualMemory32(0x5010, 0, buffer.data(), 28), StatusFromWord(0xC0000138));
}

TEST_F(NativeOfX86, MemoryAndOtherQueriesAreThoseOfTheBase) {
    Fill(0x5000, 16);
    EXPECT_EQ(Object().ReadMemory(0x700005000, buffer.data(), 16, nullptr), STATUS_OF_SUCCESS);
    EXPECT_EQ(system.TakeCalls(), (Lines{"SetLastStatusValue(0x0)", Read(0x5000, 16)}));
    Object().QueryProcessInformation(0, buffer.data(), 24, nullptr);
    EXPECT_EQ(system.TakeCalls(), Lines{"NtQueryInformationProcess(process 7, class 0, buffer, 24, null)"});
}

} // namespace
