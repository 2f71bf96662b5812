// The wrappers of 64-bit NT functions.
#include "native/gateWrappers.h"

#include <cstring>

#include "kit/system/scriptedProcess/gateHalf.h"
#include "kit/system/scriptedProcess/internals.h"
#include "native/gate.h"

#include <gtest/gtest.h>

namespace {

using namespace scripted;
using Lines = std::vector<std::string>;

constexpr uint64_t minusOne = 0xFFFFFFFFFFFFFFFF;

class GateWrappers : public testing::Test {
protected:
    void SetUp() override { half.Build(gate); }

    // Defines the NT function of that name: what it does with its arguments, and its 64-bit result.
    void Define(const char* name, std::function<uint64_t(const GateArguments&)> body) {
        gate.functions[half.AddressOf(name)] = std::move(body);
    }
    void Define(const char* name, uint64_t result) {
        Define(name, [=](const GateArguments&) { return result; });
    }

    template <typename Value>
    static Value Load(uint64_t address) {
        Value value;
        std::memcpy(&value, reinterpret_cast<const void*>(address), sizeof value);
        return value;
    }
    template <typename Value>
    static void Store(uint64_t address, Value value) {
        std::memcpy(reinterpret_cast<void*>(address), &value, sizeof value);
    }
    static uint64_t Address(const void* pointer) { return reinterpret_cast<uintptr_t>(pointer); }

    // Calls every wrapper, each of which must give 0.
    void ExpectAllToGive0() {
        EXPECT_FALSE(GateGetContext(thread, buffer));
        EXPECT_FALSE(GateSetContext(thread, buffer));
        EXPECT_FALSE(GateReadMemory(process, 0x5000, buffer, 8, nullptr));
        EXPECT_FALSE(GateWriteMemory(process, 0x5000, buffer, 8, nullptr));
        EXPECT_EQ(GateAllocateMemory(process, 0x5000, 8, 0x1000, 4), 0u);
        EXPECT_FALSE(GateFreeMemory(process, 0x5000, 8, 0x8000));
        uint32_t old = 0;
        EXPECT_FALSE(GateProtectMemory(process, 0x5000, 8, 4, &old));
        EXPECT_EQ(GateQueryMemory(process, 0x5000, buffer, 48), 0u);
    }
    static constexpr const char* names[] = {"NtGetContextThread",     "NtSetContextThread",      "NtReadVirtualMemory",
                                            "NtWriteVirtualMemory",   "NtAllocateVirtualMemory", "NtFreeVirtualMemory",
                                            "NtProtectVirtualMemory", "NtQueryVirtualMemory"};

    System& system = Reset();
    Gate& gate = ResetGate();
    GateHalf half;
    char buffer[64] = {};
    const platform::Handle process = platform::GetCurrentProcess(); // the pseudo handle -1
    const platform::Handle thread = reinterpret_cast<platform::Handle>(intptr_t{-2});
};

TEST_F(GateWrappers, GetContextPassesThreadAndContext) {
    EXPECT_TRUE(GateGetContext(thread, buffer));
    EXPECT_EQ(system.TakeCalls().back(), "GateCall(NtGetContextThread, 2)");
    EXPECT_EQ(gate.lastArguments, (GateArguments{minusOne - 1, Address(buffer)}));
    EXPECT_STREQ(buffer, "gate64");
}

TEST_F(GateWrappers, SetContextPassesThreadAndContext) {
    Define("NtSetContextThread", 0);
    EXPECT_TRUE(GateSetContext(thread, buffer));
    EXPECT_EQ(system.TakeCalls().back(), "GateCall(NtSetContextThread, 2)");
    EXPECT_EQ(gate.lastArguments, (GateArguments{minusOne - 1, Address(buffer)}));
}

// Reading and writing

struct Transfer {
    const char* function;
    bool (*wrapper)(platform::Handle, uint64_t, char*, uint32_t, uint64_t*);
};

class GateTransfer : public GateWrappers, public testing::WithParamInterface<Transfer> {};

TEST_P(GateTransfer, PassesProcessAddressBufferSizeAndTheAddressOfALocalCount) {
    uint64_t countAtCall = 1;
    Define(GetParam().function, [&](const GateArguments& arguments) {
        countAtCall = Load<uint64_t>(arguments.at(4));
        Store<uint64_t>(arguments.at(4), 0x700000008);
        return uint64_t{0};
    });
    EXPECT_TRUE(GetParam().wrapper(process, 0x7FF612345678, buffer, 0xFFFFFFF8, nullptr));
    EXPECT_EQ(system.TakeCalls().back(), std::string("GateCall(") + GetParam().function + ", 5)");
    ASSERT_EQ(gate.lastArguments.size(), 5u);
    EXPECT_EQ(gate.lastArguments[0], minusOne);
    EXPECT_EQ(gate.lastArguments[1], 0x7FF612345678u);
    EXPECT_EQ(gate.lastArguments[2], Address(buffer));
    EXPECT_EQ(gate.lastArguments[3], 0xFFFFFFF8u); // a size is widened with zeros
    EXPECT_EQ(countAtCall, 0u);
}

TEST_P(GateTransfer, StartsTheCountFromTheCallersAndWritesItBackOnSuccess) {
    uint64_t countAtCall = 0;
    Define(GetParam().function, [&](const GateArguments& arguments) {
        countAtCall = Load<uint64_t>(arguments.at(4));
        Store<uint64_t>(arguments.at(4), 0x700000008);
        return uint64_t{0};
    });
    uint64_t count = 0x900000001;
    EXPECT_TRUE(GetParam().wrapper(process, 0x5000, buffer, 8, &count));
    EXPECT_EQ(countAtCall, 0x900000001u);
    EXPECT_EQ(count, 0x700000008u);
    EXPECT_NE(gate.lastArguments[4], Address(&count));
}

TEST_P(GateTransfer, LeavesTheCallersCountAloneOnFailure) {
    Define(GetParam().function, [&](const GateArguments& arguments) {
        Store<uint64_t>(arguments.at(4), 4);
        return uint64_t{partialCopy};
    });
    uint64_t count = 77;
    EXPECT_FALSE(GetParam().wrapper(process, 0x5000, buffer, 8, &count));
    EXPECT_EQ(count, 77u);
    EXPECT_EQ(system.lastError, partialCopy ^ 0x5A5A0000);
}

INSTANTIATE_TEST_SUITE_P(
    Both, GateTransfer,
    testing::Values(Transfer{"NtReadVirtualMemory",
                             [](platform::Handle handle, uint64_t address, char* local, uint32_t size,
                                uint64_t* count) { return GateReadMemory(handle, address, local, size, count); }},
                    Transfer{"NtWriteVirtualMemory",
                             [](platform::Handle handle, uint64_t address, char* local, uint32_t size,
                                uint64_t* count) { return GateWriteMemory(handle, address, local, size, count); }}),
    [](const auto& one) { return std::string(one.param.function); });

// Memory

TEST_F(GateWrappers, AllocateMemoryPassesALocalBaseThatStartsFromTheAddressAndGivesItBack) {
    uint64_t baseAtCall = 0;
    uint64_t sizeAtCall = 0;
    Define("NtAllocateVirtualMemory", [&](const GateArguments& arguments) {
        baseAtCall = Load<uint64_t>(arguments.at(1));
        sizeAtCall = Load<uint64_t>(arguments.at(3));
        Store<uint64_t>(arguments.at(1), 0x7FF600000000);
        return uint64_t{0};
    });
    EXPECT_EQ(GateAllocateMemory(process, 0x7FF612340000, 0xFFFFF000, 0x80003000, 0x80000004), 0x7FF600000000u);
    EXPECT_EQ(system.TakeCalls().back(), "GateCall(NtAllocateVirtualMemory, 6)");
    EXPECT_EQ(baseAtCall, 0x7FF612340000u);
    EXPECT_EQ(sizeAtCall, 0xFFFFF000u);
    EXPECT_EQ(gate.lastArguments[0], minusOne);
    EXPECT_EQ(gate.lastArguments[2], 0u);
    EXPECT_EQ(gate.lastArguments[4], 0x80003000u); // widened with zeros
    EXPECT_EQ(gate.lastArguments[5], 0x80000004u);
}

TEST_F(GateWrappers, AllocateMemoryGives0OnFailureWithTheStatusAsTheLastError) {
    Define("NtAllocateVirtualMemory", 0xC0000017);
    EXPECT_EQ(GateAllocateMemory(process, 0x5000, 0x1000, 0x3000, 4), 0u);
    EXPECT_EQ(system.lastError, 0xC0000017u ^ 0x5A5A0000u);
}

TEST_F(GateWrappers, FreeMemoryPassesLocalsOfBaseAndSizeAndTheType) {
    uint64_t baseAtCall = 0;
    uint64_t sizeAtCall = 1;
    Define("NtFreeVirtualMemory", [&](const GateArguments& arguments) {
        baseAtCall = Load<uint64_t>(arguments.at(1));
        sizeAtCall = Load<uint64_t>(arguments.at(2));
        return uint64_t{0};
    });
    EXPECT_TRUE(GateFreeMemory(process, 0x7FF612340000, 0, 0x8000));
    EXPECT_EQ(system.TakeCalls().back(), "GateCall(NtFreeVirtualMemory, 4)");
    EXPECT_EQ(baseAtCall, 0x7FF612340000u);
    EXPECT_EQ(sizeAtCall, 0u);
    EXPECT_EQ(gate.lastArguments[0], minusOne);
    EXPECT_EQ(gate.lastArguments[3], 0x8000u);
}

TEST_F(GateWrappers, ProtectMemoryPassesLocalsOfBaseAndSizeTheProtectionAndThePlaceForTheOld) {
    uint64_t baseAtCall = 0;
    uint64_t sizeAtCall = 0;
    Define("NtProtectVirtualMemory", [&](const GateArguments& arguments) {
        baseAtCall = Load<uint64_t>(arguments.at(1));
        sizeAtCall = Load<uint64_t>(arguments.at(2));
        Store<uint32_t>(arguments.at(4), 0x40);
        return uint64_t{0};
    });
    uint32_t old = 0;
    EXPECT_TRUE(GateProtectMemory(process, 0x7FF612340000, 0x2000, 2, &old));
    EXPECT_EQ(system.TakeCalls().back(), "GateCall(NtProtectVirtualMemory, 5)");
    EXPECT_EQ(baseAtCall, 0x7FF612340000u);
    EXPECT_EQ(sizeAtCall, 0x2000u);
    EXPECT_EQ(gate.lastArguments[3], 2u);
    EXPECT_EQ(gate.lastArguments[4], Address(&old));
    EXPECT_EQ(old, 0x40u);
}

TEST_F(GateWrappers, QueryMemoryPassesClass0AndGivesTheLow32BitsOfTheLength) {
    Define("NtQueryVirtualMemory", [&](const GateArguments& arguments) {
        Store<uint64_t>(arguments.at(5), 0x700000030);
        return uint64_t{0};
    });
    EXPECT_EQ(GateQueryMemory(process, 0x7FF612345678, buffer, 48), 0x30u);
    EXPECT_EQ(system.TakeCalls().back(), "GateCall(NtQueryVirtualMemory, 6)");
    EXPECT_EQ(GateArguments(gate.lastArguments.begin(), gate.lastArguments.begin() + 5),
              (GateArguments{minusOne, 0x7FF612345678, 0, Address(buffer), 48}));
}

TEST_F(GateWrappers, QueryMemoryRecordsAFailureAndGivesTheLengthAllTheSame) {
    Define("NtQueryVirtualMemory", [&](const GateArguments& arguments) {
        Store<uint64_t>(arguments.at(5), 48);
        return uint64_t{invalidAddress};
    });
    EXPECT_EQ(GateQueryMemory(process, 0x5000, buffer, 48), 48u);
    EXPECT_EQ(system.lastError, invalidAddress ^ 0x5A5A0000);
    Define("NtQueryVirtualMemory", uint64_t{invalidAddress});
    EXPECT_EQ(GateQueryMemory(process, 0x5000, buffer, 48), 0u);
}

// All of them

TEST_F(GateWrappers, SuccessLeavesTheLastErrorAlone) {
    system.lastError = 77;
    for (const char* const name : names) {
        Define(name, 0);
    }
    uint32_t old = 0;
    EXPECT_TRUE(GateGetContext(thread, buffer));
    EXPECT_TRUE(GateSetContext(thread, buffer));
    EXPECT_TRUE(GateReadMemory(process, 0x5000, buffer, 8, nullptr));
    EXPECT_TRUE(GateWriteMemory(process, 0x5000, buffer, 8, nullptr));
    EXPECT_EQ(GateAllocateMemory(process, 0x5000, 8, 0x1000, 4), 0x5000u);
    EXPECT_TRUE(GateFreeMemory(process, 0x5000, 8, 0x8000));
    EXPECT_TRUE(GateProtectMemory(process, 0x5000, 8, 4, &old));
    EXPECT_EQ(GateQueryMemory(process, 0x5000, buffer, 48), 0u);
    EXPECT_EQ(system.lastError, 77u);
}

TEST_F(GateWrappers, EveryResultBut0IsAFailureAndBecomesTheLastError) {
    for (const uint64_t status : {uint64_t{0xC0000005}, uint64_t{1}, uint64_t{0x100000000}, uint64_t{0x40000003},
                                  uint64_t{0xFFFFFFFFC0000005}}) {
        for (const char* const name : names) {
            Define(name, status);
        }
        system.TakeCalls();
        ExpectAllToGive0();
        EXPECT_EQ(system.Count("RtlSetLastWin32Error(" + Hex(static_cast<uint32_t>(status) ^ 0x5A5A0000) + ")"), 8u);
    }
}

TEST_F(GateWrappers, AWrapperWhoseFunctionIsMissingGives0AndLeavesTheLastErrorAlone) {
    half.hidden = {std::begin(names), std::end(names)};
    system.lastError = 77;
    ExpectAllToGive0();
    EXPECT_EQ(system.lastError, 77u);
    EXPECT_EQ(system.Count("GateCall(LdrGetProcedureAddress"), 8u);
    EXPECT_EQ(system.Count("GateCall"), 8u);
}

TEST_F(GateWrappers, AMissingFunctionIsLookedForAgainAndOneThatWasFoundIsNot) {
    half.hidden = {"NtGetContextThread"};
    EXPECT_FALSE(GateGetContext(thread, buffer));
    half.hidden.clear();
    EXPECT_TRUE(GateGetContext(thread, buffer));
    system.TakeCalls();
    EXPECT_TRUE(GateGetContext(thread, buffer));
    EXPECT_EQ(system.TakeCalls(), Lines{"GateCall(NtGetContextThread, 2)"});
}

TEST_F(GateWrappers, WithoutA64BitNtdllAllGive0) {
    ResetGate();
    half.modules.pop_back();
    half.modules.pop_back();
    half.Build(gate);
    system.lastError = 77;
    ExpectAllToGive0();
    EXPECT_EQ(system.lastError, 77u);
    EXPECT_EQ(system.Count("GateCall"), 0u);
}

TEST_F(GateWrappers, PseudoHandlesStayWhatTheyAre) {
    EXPECT_EQ(GateArgument(process), minusOne);
    EXPECT_EQ(GateArgument(thread), minusOne - 1);
    EXPECT_EQ(GateArgument(nullptr), 0u);
}

} // namespace
