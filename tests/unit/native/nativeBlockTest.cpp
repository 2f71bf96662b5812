// PEB and TEB as a caller that is as wide as the machine finds them. The sizes of plain queries are those of the
// caller.
#include "kit/system/scriptedProcess/nativeFixture.h"
#include "native/caller.h"
#include "native/ntFunctions.h"

namespace {

using namespace scripted;

constexpr size_t plainPebSize = Caller::is64Bit ? 904 : 592;
constexpr size_t plainQuerySize = Caller::is64Bit ? 48 : 24;

class NativeBlock : public NativeFixture {
protected:
    Native& Object() {
        m_native.emplace(process);
        system.TakeCalls();
        return *m_native;
    }

    std::string PlainQuery() const {
        return "NtQueryInformationProcess(process 7, class 0, buffer, " + std::to_string(plainQuerySize) + ", length)";
    }
    static std::string Read(uint64_t address, size_t size) {
        return "ReadProcessMemory(process 7, " + Hex(address) + ", buffer, " + std::to_string(size) + ", null)";
    }

    // The PEB of a plain query, as the target has it and as it is returned.
    static constexpr uint64_t plainPeb = Caller::is64Bit ? peb64 : peb32;
    static constexpr uint64_t plainPebResult = Caller::is64Bit ? peb64 : 0xFFFFFFFF80310000;

    const std::string wow64Query = "NtQueryInformationProcess(process 7, class 26, buffer, 8, null)";
    const std::string threadQuery = "NtQueryInformationThread(thread 9, class 0, buffer, 48, length)";
    static constexpr uint64_t teb = teb64;

private:
    std::optional<Native> m_native;
};

// ReadPeb64

TEST_F(NativeBlock, ReadPeb64FindsThePebByAPlainQueryAndReadsItInTheCallersSize) {
    Fill(plainPeb, 0x1000);
    EXPECT_EQ(Object().ReadPeb64(buffer.data()), plainPebResult);
    EXPECT_EQ(system.TakeCalls(), (Lines{PlainQuery(), Read(plainPeb, plainPebSize)}));
    EXPECT_TRUE(Holds(buffer, plainPebSize));
}

TEST_F(NativeBlock, ReadPeb64OfAWow64TargetIsTheSame) {
    target->isWow64 = 1;
    Fill(plainPeb, 0x1000);
    EXPECT_EQ(Object().ReadPeb64(buffer.data()), plainPebResult);
    EXPECT_EQ(system.TakeCalls(), (Lines{PlainQuery(), Read(plainPeb, plainPebSize)}));
}

TEST_F(NativeBlock, ReadPeb64ReturnsTheAddressAlsoWhenTheReadFailed) {
    EXPECT_EQ(Object().ReadPeb64(buffer.data()), plainPebResult);
    EXPECT_EQ(system.Count("ReadProcessMemory"), 1u);
}

TEST_F(NativeBlock, ReadPeb64WithoutADestinationQueriesTheAddressOnly) {
    Fill(plainPeb, 0x1000);
    EXPECT_EQ(Object().ReadPeb64(nullptr), plainPebResult);
    EXPECT_EQ(system.TakeCalls(), Lines{PlainQuery()});
}

TEST_F(NativeBlock, ReadPeb64Is0WhenTheQueryFailed) {
    Fill(plainPeb, 0x1000);
    Native& native = Object();
    for (const uint32_t status : negativeStatuses) {
        system.Next("NtQueryInformationProcess", {status, true}); // though it has told an address
        EXPECT_EQ(native.ReadPeb64(buffer.data()), 0u) << Hex(status);
    }
    EXPECT_EQ(system.Count("ReadProcessMemory"), 0u);
}

TEST_F(NativeBlock, ReadPeb64GoesOnWithAPositiveStatus) {
    Fill(plainPeb, 0x1000);
    Native& native = Object();
    for (const uint32_t status : positiveStatuses) {
        system.Next("NtQueryInformationProcess", {status, true});
        EXPECT_EQ(native.ReadPeb64(buffer.data()), plainPebResult) << Hex(status);
    }
    EXPECT_EQ(system.Count("ReadProcessMemory"), std::size(positiveStatuses));
}

TEST_F(NativeBlock, ReadPeb64AndReadPeb32Are0WithoutTheirFunction) {
    target->isWow64 = 1;
    system.missing = {"NtQueryInformationProcess"};
    EXPECT_EQ(Object().ReadPeb64(buffer.data()), 0u);
    EXPECT_EQ(Object().ReadPeb32(buffer.data()), 0u);
    EXPECT_EQ(system.TakeCalls(), Lines{});
}

// ReadPeb32

TEST_F(NativeBlock, ReadPeb32OfA64BitTargetIs0WithoutAQuery) {
    EXPECT_EQ(Object().ReadPeb32(buffer.data()), 0u);
    EXPECT_EQ(system.TakeCalls(), Lines{});
}

TEST_F(NativeBlock, ReadPeb32AsksForTheWow64PebInAnEightByteWordWithoutALength) {
    target->isWow64 = 1;
    Fill(peb32, 0x1000);
    EXPECT_EQ(Object().ReadPeb32(buffer.data()), peb32);
    EXPECT_EQ(system.TakeCalls(), (Lines{wow64Query, Read(peb32, 592)}));
    EXPECT_TRUE(Holds(buffer, 592));
}

TEST_F(NativeBlock, ReadPeb32ReturnsTheAddressAlsoWhenTheReadFailed) {
    target->isWow64 = 1;
    EXPECT_EQ(Object().ReadPeb32(buffer.data()), peb32);
    EXPECT_EQ(system.TakeCalls(), (Lines{wow64Query, Read(peb32, 592)}));
}

TEST_F(NativeBlock, ReadPeb32WithoutADestinationQueriesTheAddressOnly) {
    target->isWow64 = 1;
    Fill(peb32, 0x1000);
    EXPECT_EQ(Object().ReadPeb32(nullptr), peb32);
    EXPECT_EQ(system.TakeCalls(), Lines{wow64Query});
}

TEST_F(NativeBlock, ReadPeb32Is0WithoutAReadWhenTheQueryFailed) {
    target->isWow64 = 1;
    Fill(peb32, 0x1000);
    Native& native = Object();
    for (const uint32_t status : negativeStatuses) {
        system.Next("NtQueryInformationProcess", {status});
        EXPECT_EQ(native.ReadPeb32(buffer.data()), 0u) << Hex(status);
    }
    EXPECT_EQ(system.Count("ReadProcessMemory"), 0u);
}

TEST_F(NativeBlock, ReadPeb32ReturnsTheWordThatAFailedQueryLeft) {
    target->isWow64 = 1;
    Fill(peb32, 0x1000);
    Native& native = Object();
    for (const uint32_t status : negativeStatuses) {
        system.Next("NtQueryInformationProcess", {status, true});
        EXPECT_EQ(native.ReadPeb32(buffer.data()), peb32) << Hex(status);
    }
    EXPECT_EQ(system.Count("ReadProcessMemory"), 0u);
}

TEST_F(NativeBlock, ReadPeb32GoesOnWithAPositiveStatus) {
    target->isWow64 = 1;
    Fill(peb32, 0x1000);
    system.Next("NtQueryInformationProcess", {0x40000003, true});
    EXPECT_EQ(Object().ReadPeb32(buffer.data()), peb32);
    EXPECT_EQ(system.TakeCalls(), (Lines{wow64Query, Read(peb32, 592)}));
}

// ReadTeb64

TEST_F(NativeBlock, ReadTeb64AsksForTheThreadIn48BytesAndReads6200) {
    Fill(TruncateToCaller(teb), 0x2000);
    EXPECT_EQ(Object().ReadTeb64(thread, buffer.data()), teb);
    EXPECT_EQ(system.TakeCalls(), (Lines{threadQuery, Read(TruncateToCaller(teb), 6200)}));
    EXPECT_TRUE(Holds(buffer, 6200));
}

TEST_F(NativeBlock, ReadTeb64ReturnsTheAddressAlsoWhenTheReadFailed) {
    EXPECT_EQ(Object().ReadTeb64(thread, buffer.data()), teb);
    EXPECT_EQ(system.Count("ReadProcessMemory"), 1u);
}

TEST_F(NativeBlock, ReadTeb64WithoutADestinationQueriesTheAddressOnly) {
    EXPECT_EQ(Object().ReadTeb64(thread, nullptr), teb);
    EXPECT_EQ(system.TakeCalls(), Lines{threadQuery});
}

TEST_F(NativeBlock, ReadTeb64Is0WithoutAReadWhenTheQueryFailed) {
    Native& native = Object();
    for (const uint32_t status : negativeStatuses) {
        system.Next("NtQueryInformationThread", {status});
        EXPECT_EQ(native.ReadTeb64(thread, buffer.data()), 0u) << Hex(status);
    }
    EXPECT_EQ(system.Count("ReadProcessMemory"), 0u);
}

TEST_F(NativeBlock, ReadTeb64GoesOnWithAPositiveStatus) {
    system.Next("NtQueryInformationThread", {0x102, true});
    EXPECT_EQ(Object().ReadTeb64(thread, buffer.data()), teb);
    EXPECT_EQ(system.Count("ReadProcessMemory"), 1u);
}

// ReadTeb32

TEST_F(NativeBlock, ReadTeb32OfA64BitTargetIs0WithoutAQuery) {
    EXPECT_EQ(Object().ReadTeb32(thread, buffer.data()), 0u);
    EXPECT_EQ(system.TakeCalls(), Lines{});
}

TEST_F(NativeBlock, ReadTeb32LooksForTheTeb8192AboveThe64BitOneAndReads4096) {
    target->isWow64 = 1;
    Fill(TruncateToCaller(teb + 8192), 0x2000);
    EXPECT_EQ(Object().ReadTeb32(thread, buffer.data()), teb + 8192);
    EXPECT_EQ(system.TakeCalls(), (Lines{threadQuery, Read(TruncateToCaller(teb + 8192), 4096)}));
    EXPECT_TRUE(Holds(buffer, 4096));
}

TEST_F(NativeBlock, ReadTeb32ReturnsTheAddressAlsoWhenTheReadFailed) {
    target->isWow64 = 1;
    EXPECT_EQ(Object().ReadTeb32(thread, buffer.data()), teb + 8192);
    EXPECT_EQ(system.Count("ReadProcessMemory"), 1u);
}

TEST_F(NativeBlock, ReadTeb32WithoutADestinationQueriesTheAddressOnly) {
    target->isWow64 = 1;
    EXPECT_EQ(Object().ReadTeb32(thread, nullptr), teb + 8192);
    EXPECT_EQ(system.TakeCalls(), Lines{threadQuery});
}

TEST_F(NativeBlock, ReadTeb32OfAWow64TargetAndABadThreadHandleIs8192) {
    target->isWow64 = 1;
    EXPECT_EQ(Object().ReadTeb32(process, buffer.data()), 8192u);
    EXPECT_EQ(system.Count("ReadProcessMemory"), 0u);
}

TEST_F(NativeBlock, ReadTeb32Is8192WithoutAReadWhenTheQueryFailed) {
    target->isWow64 = 1;
    Fill(TruncateToCaller(teb + 8192), 0x2000);
    Native& native = Object();
    for (const uint32_t status : negativeStatuses) {
        system.Next("NtQueryInformationThread", {status});
        EXPECT_EQ(native.ReadTeb32(thread, buffer.data()), 8192u) << Hex(status);
    }
    EXPECT_EQ(system.Count("ReadProcessMemory"), 0u);
}

TEST_F(NativeBlock, ReadTeb32AddsTheDistanceToWhatAFailedQueryLeft) {
    target->isWow64 = 1;
    Fill(TruncateToCaller(teb + 8192), 0x2000);
    Native& native = Object();
    for (const uint32_t status : negativeStatuses) {
        system.Next("NtQueryInformationThread", {status, true});
        EXPECT_EQ(native.ReadTeb32(thread, buffer.data()), teb + 8192) << Hex(status);
    }
    EXPECT_EQ(system.Count("ReadProcessMemory"), 0u);
}

TEST_F(NativeBlock, ReadTeb32GoesOnWithAPositiveStatus) {
    target->isWow64 = 1;
    Fill(TruncateToCaller(teb + 8192), 0x2000);
    Native& native = Object();
    for (const uint32_t status : positiveStatuses) {
        system.Next("NtQueryInformationThread", {status, true});
        EXPECT_EQ(native.ReadTeb32(thread, buffer.data()), teb + 8192) << Hex(status);
    }
    EXPECT_EQ(system.Count(Read(TruncateToCaller(teb + 8192), 4096)), std::size(positiveStatuses));
}

TEST_F(NativeBlock, ReadTeb32WithoutItsFunctionIs8192AndReadTeb64Is0) {
    target->isWow64 = 1;
    system.missing = {"NtQueryInformationThread"};
    EXPECT_EQ(Object().ReadTeb32(thread, buffer.data()), 8192u);
    EXPECT_EQ(Object().ReadTeb64(thread, buffer.data()), 0u);
    EXPECT_EQ(system.TakeCalls(), Lines{});
}

// The 32-bit TEB that a plain query tells, as the variants for the other pairings take it

class PlainBlocks : public Native {
public:
    explicit PlainBlocks(platform::Handle process) : Native(process, true) {}

    using Native::ReadPlainTeb32;
};

// A thread query of a 32-bit system: 28 bytes, with the address of the TEB in the second word.
uint32_t statusOfThreadQuery = 0;

NtStatus MORD_STDCALL QueryThreadOf32Bits(platform::Handle, uint32_t informationClass, void* buffer, uint32_t size,
                                          uint32_t*) {
    if (informationClass != 0 || size != 28) {
        return StatusFromWord(lengthMismatch);
    }
    const uint32_t reply[] = {259, 0x80412000, 7, 9, 1, 0, 0};
    std::memcpy(buffer, reply, sizeof reply);
    return StatusFromWord(statusOfThreadQuery);
}

TEST_F(NativeBlock, ThePlain32BitTebIsAskedForInTheLayoutOf32BitsByACallerOfEitherWidth) {
    Fill(teb32, 0x1000);
    PlainBlocks native(process);
    GetNativeFunctionTable()["NtQueryInformationThread"] = reinterpret_cast<void*>(&QueryThreadOf32Bits);
    system.TakeCalls();
    EXPECT_EQ(native.ReadPlainTeb32(thread, buffer.data()), teb32);
    EXPECT_EQ(native.ReadPlainTeb32(thread, nullptr), teb32);
    EXPECT_EQ(system.TakeCalls(), Lines{Read(teb32, 4096)});
    EXPECT_TRUE(Holds(buffer, 4096));
    statusOfThreadQuery = accessViolation; // though it has told an address
    EXPECT_EQ(native.ReadPlainTeb32(thread, buffer.data()), teb32);
    statusOfThreadQuery = 0;
    GetNativeFunctionTable().erase("NtQueryInformationThread");
    EXPECT_EQ(native.ReadPlainTeb32(thread, buffer.data()), 0u);
    EXPECT_EQ(system.TakeCalls(), Lines{});
}

} // namespace
