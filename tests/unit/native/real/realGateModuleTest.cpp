// The 64-bit half of this process, and its functions on memory and threads of this process and of a child.
#include <cstring>
#include <map>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <windows.h>

#include "kit/system/published/queryLayouts.h"
#include "native/gate.h"
#include "native/gateWrappers.h"
#include "unit/native/real/realChildFixture.h"

namespace {

TEST(RealGateModules, AreFoundWithoutRegardToCase) {
    const uint64_t ntdll = GateModuleBase(L"ntdll.dll");
    EXPECT_GT(ntdll, 0xFFFFFFFFu);
    EXPECT_EQ(GateModuleBase(L"NTDLL.DLL"), ntdll);
    EXPECT_EQ(GateModuleBase(L"NtDll.Dll"), ntdll);
    EXPECT_EQ(GateNtdllBase(), ntdll);
}

TEST(RealGateModules, ANameThatIsNotInTheListGives0) {
    EXPECT_EQ(GateModuleBase(L"nothing.dll"), 0u);
    EXPECT_EQ(GateModuleBase(L"ntdll"), 0u);
    EXPECT_EQ(GateModuleBase(L""), 0u);
}

// A second walk of the exports, by reads of the process's memory instead of copies through the gate.
class ExportWalk {
public:
    explicit ExportWalk(uint64_t base) : m_base(base) {
        const auto headers =
            Load<published::ImageNtHeaders64>(static_cast<uint32_t>(Load<published::ImageDosHeader>(0).e_lfanew));
        m_directory = headers.OptionalHeader.ExportDirectory;
        const auto exports = Load<published::ImageExportDirectory>(m_directory.VirtualAddress);
        const auto functions = LoadTable<uint32_t>(exports.AddressOfFunctions, exports.NumberOfFunctions);
        const auto ordinals = LoadTable<uint16_t>(exports.AddressOfNameOrdinals, exports.NumberOfNames);
        const auto names = LoadTable<uint32_t>(exports.AddressOfNames, exports.NumberOfNames);
        for (size_t i = 0; i < names.size(); ++i) {
            const uint32_t function = functions.at(ordinals[i]);
            if (!IsForwarder(function)) {
                m_exports[LoadText(names[i])] = base + function;
            }
        }
    }

    const std::map<std::string, uint64_t>& Exports() const { return m_exports; }

private:
    void Read(uint64_t address, void* to, size_t size) const {
        if (!GateReadMemory(GetCurrentProcess(), m_base + address, to, static_cast<uint32_t>(size), nullptr)) {
            throw std::runtime_error("a read of the 64-bit ntdll failed");
        }
    }
    template <typename Value>
    Value Load(uint32_t address) const {
        Value value;
        Read(address, &value, sizeof value);
        return value;
    }
    template <typename Entry>
    std::vector<Entry> LoadTable(uint32_t address, uint32_t count) const {
        std::vector<Entry> table(count);
        Read(address, table.data(), count * sizeof(Entry));
        return table;
    }
    std::string LoadText(uint32_t address) const {
        std::string text;
        for (char c = Load<char>(address); c != '\0'; c = Load<char>(++address)) {
            text += c;
        }
        return text;
    }
    bool IsForwarder(uint32_t function) const {
        return function >= m_directory.VirtualAddress && function - m_directory.VirtualAddress < m_directory.Size;
    }

    uint64_t m_base;
    published::ImageDataDirectory m_directory{};
    std::map<std::string, uint64_t> m_exports;
};

TEST(RealGateExports, AreTheSameAsThoseOfASecondWalk) {
    const uint64_t ntdll = GateNtdllBase();
    const ExportWalk walk(ntdll);
    ASSERT_GT(walk.Exports().size(), 500u);
    EXPECT_EQ(GateLoaderResolver(), walk.Exports().at("LdrGetProcedureAddress"));
    for (const auto& [name, address] : walk.Exports()) {
        ASSERT_EQ(GateResolve(ntdll, name.c_str()), address) << name;
    }
}

TEST(RealGateExports, ANameThatIsNotThereIs0) {
    EXPECT_EQ(GateResolve(GateNtdllBase(), "NtNothingOfThatName"), 0u);
    EXPECT_EQ(GateResolve(GateNtdllBase(), "ldrgetprocedureaddress"), 0u);
}

// The wrappers

// A 64-bit CONTEXT: its flags at 0x30, the debug registers from 0x48 on, Rbx at 0x90, Rip at 0xF8.
struct alignas(16) Context64 {
    char bytes[1232] = {};

    explicit Context64(uint32_t flags) { std::memcpy(bytes + 0x30, &flags, sizeof flags); }
    uint64_t Register(size_t offset) const {
        uint64_t value = 0;
        std::memcpy(&value, bytes + offset, sizeof value);
        return value;
    }
    void SetRegister(size_t offset, uint64_t value) { std::memcpy(bytes + offset, &value, sizeof value); }
};
constexpr uint32_t controlOfX64 = 0x100001;
constexpr uint32_t integersOfX64 = 0x100002;
constexpr size_t rbx = 0x90;
constexpr size_t rip = 0xF8;

// Wine fails some calls with another status than Windows does.
DWORD OfSystem(DWORD wine, DWORD windows) {
    return UnderWine() ? wine : windows;
}

// What the last error is after `call`, which has to fail; 0 before.
template <typename Call>
DWORD ErrorOf(const Call& call) {
    SetLastError(0);
    EXPECT_EQ(static_cast<uint64_t>(call()), 0u);
    return GetLastError();
}

class RealGateMemory : public testing::TestWithParam<int> {
protected:
    // This process for 0, else a child of that many bits.
    void SetUp() override {
        if (GetParam() != 0) {
            child.emplace(GetParam());
        }
    }
    platform::Handle Target() const { return child ? child->Handle() : GetCurrentProcess(); }

    static constexpr uint32_t commit = MEM_COMMIT | MEM_RESERVE;

    std::optional<ChildProcess> child;
};

TEST_P(RealGateMemory, IsAllocatedWrittenReadProtectedQueriedAndFreed) {
    const uint64_t memory = GateAllocateMemory(Target(), 0, 0x2000, commit, PAGE_READWRITE);
    ASSERT_NE(memory, 0u);
    const char text[] = "written through the gate";
    uint64_t count = 0;
    ASSERT_TRUE(GateWriteMemory(Target(), memory + 0x1000, text, sizeof text, &count));
    EXPECT_EQ(count, sizeof text);
    char read[sizeof text] = {};
    count = 0;
    ASSERT_TRUE(GateReadMemory(Target(), memory + 0x1000, read, sizeof read, &count));
    EXPECT_EQ(count, sizeof read);
    EXPECT_STREQ(read, text);
    EXPECT_TRUE(GateReadMemory(Target(), memory, read, 1, nullptr));

    uint32_t old = 0;
    ASSERT_TRUE(GateProtectMemory(Target(), memory, 0x1000, PAGE_READONLY, &old));
    EXPECT_EQ(old, static_cast<uint32_t>(PAGE_READWRITE));
    published::MemoryBasicInformation<uint64_t> information{};
    EXPECT_EQ(GateQueryMemory(Target(), memory + 0x10, &information, sizeof information), sizeof information);
    EXPECT_EQ(information.BaseAddress, memory);
    EXPECT_EQ(information.AllocationBase, memory);
    EXPECT_EQ(information.RegionSize, 0x1000u);
    EXPECT_EQ(information.Protect, static_cast<uint32_t>(PAGE_READONLY));

    ASSERT_TRUE(GateFreeMemory(Target(), memory, 0, MEM_RELEASE));
    EXPECT_EQ(GateQueryMemory(Target(), memory, &information, sizeof information), sizeof information);
    EXPECT_EQ(information.State, static_cast<uint32_t>(MEM_FREE));
}

TEST_P(RealGateMemory, IsReachedAbove4GiB) {
    if (GetParam() == 32) { // such a child's own memory lies below; its 64-bit half above
        published::MemoryBasicInformation<uint64_t> information{};
        EXPECT_EQ(GateQueryMemory(Target(), GateNtdllBase(), &information, sizeof information), sizeof information);
        EXPECT_EQ(information.AllocationBase, GateNtdllBase()); // the same in every process
        return;
    }
    const uint64_t wanted = 0x123400000000;
    const uint64_t memory = GateAllocateMemory(Target(), wanted, 0x1000, commit, PAGE_READWRITE);
    ASSERT_EQ(memory, wanted);
    const uint64_t value = 0xFEDCBA9876543210;
    uint64_t read = 0;
    EXPECT_TRUE(GateWriteMemory(Target(), memory + 8, &value, sizeof value, nullptr));
    EXPECT_TRUE(GateReadMemory(Target(), memory + 8, &read, sizeof read, nullptr));
    EXPECT_EQ(read, value);
    EXPECT_TRUE(GateFreeMemory(Target(), memory, 0, MEM_RELEASE));
}

TEST_P(RealGateMemory, AReadOrAWriteThatFailsGives0AndSetsTheLastError) {
    char byte = 'x';
    uint64_t count = 77;
    EXPECT_EQ(ErrorOf([&] { return GateReadMemory(Target(), 0x10, &byte, 1, &count); }), // page 0
              OfSystem(ERROR_NOACCESS, ERROR_PARTIAL_COPY));
    EXPECT_EQ(ErrorOf([&] { return GateWriteMemory(Target(), 0x10, &byte, 1, &count); }),
              OfSystem(ERROR_ACCESS_DENIED, ERROR_PARTIAL_COPY));
    EXPECT_EQ(count, 77u);
    EXPECT_EQ(byte, 'x');
}

TEST_P(RealGateMemory, AFailureOfTheOthersGives0AndSetsTheLastErrorToo) {
    const uint64_t freed = GateAllocateMemory(Target(), 0, 0x1000, commit, PAGE_READWRITE);
    ASSERT_TRUE(GateFreeMemory(Target(), freed, 0, MEM_RELEASE));
    uint32_t old = 77;
    EXPECT_EQ(ErrorOf([&] { return GateAllocateMemory(Target(), 0, 0x1000, 0x40000000, PAGE_READWRITE); }),
              DWORD{ERROR_INVALID_PARAMETER}); // no such type
    EXPECT_EQ(ErrorOf([&] { return GateFreeMemory(Target(), freed, 0, MEM_RELEASE); }),
              OfSystem(ERROR_INVALID_PARAMETER, ERROR_INVALID_ADDRESS));
    EXPECT_EQ(ErrorOf([&] { return GateProtectMemory(Target(), freed, 0x1000, PAGE_READONLY, &old); }),
              OfSystem(ERROR_INVALID_PARAMETER, ERROR_INVALID_ADDRESS));
    EXPECT_EQ(old, 77u);
}

INSTANTIATE_TEST_SUITE_P(Processes, RealGateMemory, testing::Values(0, 32, 64), [](const auto& one) {
    return one.param == 0 ? std::string("Own") : "Child" + std::to_string(one.param);
});

TEST(RealGateWrappers, ABadHandleIsToldByTheLastErrorOfEach) {
    const HANDLE bad = reinterpret_cast<HANDLE>(uintptr_t{0x7FFFFFF0});
    const DWORD expected = ERROR_INVALID_HANDLE;
    char byte = 0;
    uint32_t old = 0;
    Context64 context(controlOfX64);
    published::MemoryBasicInformation<uint64_t> information{};
    EXPECT_EQ(ErrorOf([&] { return GateReadMemory(bad, 0x10000, &byte, 1, nullptr); }), expected);
    EXPECT_EQ(ErrorOf([&] { return GateWriteMemory(bad, 0x10000, &byte, 1, nullptr); }), expected);
    EXPECT_EQ(ErrorOf([&] { return GateAllocateMemory(bad, 0, 0x1000, MEM_COMMIT, PAGE_READWRITE); }), expected);
    EXPECT_EQ(ErrorOf([&] { return GateFreeMemory(bad, 0x10000, 0, MEM_RELEASE); }), expected);
    EXPECT_EQ(ErrorOf([&] { return GateProtectMemory(bad, 0x10000, 1, PAGE_READONLY, &old); }), expected);
    EXPECT_EQ(ErrorOf([&] { return GateQueryMemory(bad, 0x10000, &information, sizeof information); }), expected);
    EXPECT_EQ(ErrorOf([&] { return GateGetContext(bad, &context); }), expected);
    EXPECT_EQ(ErrorOf([&] { return GateSetContext(bad, &context); }), expected);
}

TEST(RealGateWrappers, AHandleOfAnotherKindIsToldByTheLastError) {
    const ChildProcess child(32);
    Context64 context(controlOfX64);
    EXPECT_EQ(ErrorOf([&] { return GateGetContext(child.Handle(), &context); }), DWORD{ERROR_INVALID_HANDLE});
    EXPECT_EQ(ErrorOf([&] { return GateSetContext(child.Handle(), &context); }), DWORD{ERROR_INVALID_HANDLE});
}

TEST(RealGateWrappers, SuccessLeavesTheLastErrorAlone) {
    const char source = 'x';
    char byte = 0;
    SetLastError(4711);
    EXPECT_TRUE(GateReadMemory(GetCurrentProcess(), reinterpret_cast<uintptr_t>(&source), &byte, 1, nullptr));
    EXPECT_EQ(GetLastError(), 4711u);
    EXPECT_EQ(byte, 'x');
}

TEST(RealGateWrappers, TheContextOfAThreadIsGotAndSet) {
    for (const int bits : {32, 64}) {
        ChildProcess child(bits);
        SuspendThread(child.MainThread());
        Context64 control(controlOfX64);
        ASSERT_TRUE(GateGetContext(child.MainThread(), &control)) << bits;
        EXPECT_NE(control.Register(rip), 0u);

        Context64 before(integersOfX64);
        ASSERT_TRUE(GateGetContext(child.MainThread(), &before)) << bits;
        Context64 changed = before;
        const uint64_t wanted = before.Register(rbx) ^ 0x5A5A5A5A;
        changed.SetRegister(rbx, wanted);
        ASSERT_TRUE(GateSetContext(child.MainThread(), &changed));
        Context64 after(integersOfX64);
        ASSERT_TRUE(GateGetContext(child.MainThread(), &after));
        EXPECT_EQ(after.Register(rbx), wanted) << bits;

        ASSERT_TRUE(GateSetContext(child.MainThread(), &before));
        ASSERT_TRUE(GateGetContext(child.MainThread(), &after));
        EXPECT_EQ(after.Register(rbx), wanted ^ 0x5A5A5A5A) << bits;
        ResumeThread(child.MainThread());
        EXPECT_FALSE(child.Tell("peb").empty()) << bits; // it goes on as if nothing had been
    }
}

} // namespace
