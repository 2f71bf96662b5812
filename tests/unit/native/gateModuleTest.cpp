// The 64-bit loader list of this process, and the resolver among the exports of its ntdll. What was found is kept for
// the life of the process: each test of a search is alone in its own.
#include <cstddef>

#include "kit/system/published/queryLayouts.h"
#include "kit/system/scriptedProcess/gateHalf.h"
#include "kit/system/scriptedProcess/internals.h"
#include "native/gate.h"

#include <gtest/gtest.h>

namespace {

using namespace scripted;
using Lines = std::vector<std::string>;

class GateModules : public testing::Test {
protected:
    static std::string Copy(uint64_t address, uint64_t size) {
        return "GateCopyIn(" + Hex(address) + ", " + std::to_string(size) + ")";
    }
    static uint64_t Entry(size_t i) { return GateHalf::firstEntry + i * 0x1000; }

    // The lines that lead to the list, and those of one entry.
    static Lines Head() {
        return {"GateThreadBlock()", Copy(GateHalf::threadBlock, 232), Copy(GateHalf::peb, 896),
                Copy(GateHalf::ldr, 84)};
    }
    static Lines EntryLines(size_t i, size_t nameSize) {
        return {Copy(Entry(i), 224), Copy(Entry(i) + 0x200, nameSize)};
    }
    static Lines Join(std::initializer_list<Lines> parts) {
        Lines all;
        for (const Lines& part : parts) {
            all.insert(all.end(), part.begin(), part.end());
        }
        return all;
    }

    System& system = Reset();
    Gate& gate = ResetGate();
    GateHalf half;
};

TEST_F(GateModules, AreReadInTheDocumentedSizesUpToTheOneSought) {
    half.Build(gate);
    EXPECT_EQ(GateModuleBase(WIDE("ntdll.dll")), GateHalf::ntdll);
    EXPECT_EQ(system.TakeCalls(), Join({Head(), EntryLines(0, 24), EntryLines(1, 20)}));
}

TEST_F(GateModules, AreFoundWithoutRegardToCase) {
    half.modules[2].baseName = WIDE("WOW64.Dll");
    half.Build(gate);
    EXPECT_EQ(GateModuleBase(WIDE("NTDLL.DLL")), GateHalf::ntdll);
    EXPECT_EQ(GateModuleBase(WIDE("nTdLl.dLL")), GateHalf::ntdll);
    EXPECT_EQ(GateModuleBase(WIDE("wow64.dll")), 0x7FFB11110000u);
    EXPECT_EQ(GateModuleBase(WIDE("WOW64.DLL")), 0x7FFB11110000u);
}

TEST_F(GateModules, AreFoundWithoutRegardToTheCaseOfEachAsciiLetter) {
    half.modules[2].baseName = WIDE("abcdefghijklmNOPQRSTUVWXYZ");
    half.Build(gate);
    EXPECT_EQ(GateModuleBase(WIDE("ABCDEFGHIJKLMnopqrstuvwxyz")), 0x7FFB11110000u);
}

TEST_F(GateModules, OtherCharactersOfANameAreComparedExactly) {
    half.modules[2].baseName = WIDE("@[");
    half.Build(gate);
    EXPECT_EQ(GateModuleBase(WIDE("`{")), 0u);
    EXPECT_EQ(GateModuleBase(WIDE("@[")), 0x7FFB11110000u);
}

TEST_F(GateModules, AreDistinguishedByTheWholeName) {
    half.Build(gate);
    for (const WideChar* const name : {WIDE("ntdll"), WIDE("ntdll.dll2"), WIDE("tdll.dll"), WIDE(""), WIDE("ntdll_dll"),
                                       WIDE("mtdll.dll"), WIDE("ntdll.dlm")}) {
        EXPECT_EQ(GateModuleBase(name), 0u) << Narrow(name);
    }
}

TEST_F(GateModules, ANameThatIsNotThereGives0AfterOneWalkAndIsLookedForAgain) {
    half.Build(gate);
    const Lines walk = Join({Head(), EntryLines(0, 24), EntryLines(1, 20), EntryLines(2, 20)});
    EXPECT_EQ(GateModuleBase(WIDE("other.dll")), 0u);
    EXPECT_EQ(system.TakeCalls(), walk);
    EXPECT_EQ(GateModuleBase(WIDE("other.dll")), 0u);
    EXPECT_EQ(system.TakeCalls(), walk);
}

TEST_F(GateModules, OfTwoWithOneNameTheFirstIsFound) {
    half.modules.insert(half.modules.begin(), {WIDE("NTDLL.dll"), 0x1110000, {}});
    half.Build(gate);
    EXPECT_EQ(GateModuleBase(WIDE("ntdll.dll")), 0x1110000u);
}

TEST_F(GateModules, TheFirstEntryIsTakenWithoutALookAtTheEnd) {
    half.modules.clear(); // the head leads to itself
    half.Build(gate);
    EXPECT_THROW(GateModuleBase(WIDE("ntdll.dll")), GateFault); // it is read as an entry, which nothing guards against
    EXPECT_EQ(system.TakeCalls().back(), Copy(GateHalf::ldr + 16, 224));
}

TEST_F(GateModules, ALinkOf0EndsTheWalk) {
    half.Build(gate);
    gate.memory.Put<uint64_t>(Entry(0), 0); // the first field of an entry is the link to the next one
    EXPECT_EQ(GateModuleBase(WIDE("ntdll.dll")), 0u);
    EXPECT_EQ(system.TakeCalls(), Join({Head(), EntryLines(0, 24)}));
    EXPECT_EQ(GateModuleBase(WIDE("program.exe")), 0x400000u);
}

TEST_F(GateModules, AHeadThatLeadsTo0EndsTheWalkBehindAnEntryOfNothing) {
    half.Build(gate);
    gate.memory.Put<uint64_t>(GateHalf::ldr + 16, 0);
    EXPECT_EQ(GateModuleBase(WIDE("ntdll.dll")), 0u);
    EXPECT_EQ(system.TakeCalls(), Join({Head(), {Copy(0, 224), Copy(0, 0)}}));
}

TEST_F(GateModules, NamesAreCopiedInTheSizeOfTheirMaximumLength) {
    half.modules[0].maximumLength = 30;
    half.modules[1].maximumLength = 18; // no room for a NUL
    half.modules[2].maximumLength = 0;  // nothing to copy
    half.Build(gate);
    EXPECT_EQ(GateModuleBase(WIDE("ntdll.dll")), GateHalf::ntdll);
    EXPECT_EQ(system.TakeCalls(), Join({Head(), EntryLines(0, 30), EntryLines(1, 18)}));
    EXPECT_EQ(GateModuleBase(WIDE("wow64.dll")), 0u);
    EXPECT_EQ(GateModuleBase(WIDE("")), 0x7FFB11110000u);
}

TEST_F(GateModules, AnOddMaximumLengthIsCopiedWhole) {
    half.modules[0].maximumLength = 21;
    half.Build(gate);
    EXPECT_EQ(GateModuleBase(WIDE("ntdll.dll")), GateHalf::ntdll);
    EXPECT_EQ(system.Count(Copy(Entry(0) + 0x200, 21)), 1u);
}

TEST_F(GateModules, AreNotLookedForWithoutMemoryForAName) {
    half.Build(gate);
    system.failingArrayAllocation = 2;
    EXPECT_EQ(GateModuleBase(WIDE("wow64.dll")), 0u);
    EXPECT_EQ(system.TakeCalls(), Join({Head(), EntryLines(0, 24), {Copy(Entry(1), 224)}}));
}

TEST_F(GateModules, AreNotLookedForWhileTheGateIsDisabled) {
    half.Build(gate);
    GateEnabled = 0;
    EXPECT_EQ(GateModuleBase(WIDE("ntdll.dll")), 0u);
    EXPECT_EQ(system.TakeCalls(), Lines{});
}

TEST_F(GateModules, TheNtdllIsLookedForUntilItIsFoundAndThenKept) {
    half.modules[1].baseName = WIDE("other.dll");
    half.Build(gate);
    EXPECT_EQ(GateNtdllBase(), 0u);
    EXPECT_EQ(GateNtdllBase(), 0u);
    EXPECT_EQ(system.Count("GateThreadBlock"), 2u); // the failure was not kept
    half.modules[1].baseName = WIDE("NtDll.dll");
    half.Build(ResetGate());
    EXPECT_EQ(GateNtdllBase(), GateHalf::ntdll);
    system.TakeCalls();
    EXPECT_EQ(GateNtdllBase(), GateHalf::ntdll);
    EXPECT_EQ(system.TakeCalls(), Lines{});
}

// The resolver

class GateResolver : public GateModules {
protected:
    static constexpr uint64_t base = GateHalf::ntdll;

    // The lines from the DOS header to the tables.
    Lines TableLines(uint64_t functions, uint64_t names) const {
        return {Copy(base, 64),
                Copy(base + 0x80, 264),
                Copy(base + GateHalf::exportDirectory, 40),
                Copy(base + GateHalf::functionTable, functions * 4),
                Copy(base + GateHalf::ordinalTable, functions * 2), // as long as the functions are many
                Copy(base + GateHalf::nameTable, names * 4)};
    }
    Lines CallsBehindTheModule() {
        GateNtdllBase();
        system.TakeCalls();
        GateLoaderResolver();
        return system.TakeCalls();
    }
};

TEST_F(GateResolver, IsFoundByItsNameThroughOrdinalAndFunctionTable) {
    half.Build(gate);
    EXPECT_EQ(GateLoaderResolver(), half.AddressOf("LdrGetProcedureAddress"));
}

TEST_F(GateResolver, IsSearchedByCopiesOfTheSizesToldAndComparesOf23Bytes) {
    half.Build(gate);
    const uint64_t names = base + GateHalf::nameTexts;
    const Lines compares = {"GateCompare(" + Hex(names) + ", 23)", "GateCompare(" +
                                                                       Hex(names + half.exports[0].size() + 1) +
                                                                       ", 23)"}; // the second name is the one
    EXPECT_EQ(CallsBehindTheModule(), Join({TableLines(13, 12), compares}));
}

TEST_F(GateResolver, IsNotTakenForANameThatOnlyBeginsLikeIt) {
    half.exports = {"LdrGetProcedureAddressEx", "LdrGetProcedureAddressForCaller", "LdrGetProcedureAddress"};
    half.Build(gate);
    EXPECT_EQ(GateLoaderResolver(), half.AddressOf("LdrGetProcedureAddress"));
}

TEST_F(GateResolver, FollowsANewHeaderThatLiesBeforeTheBase) {
    half.newHeader = -0x800; // sign-extended
    half.Build(gate);
    EXPECT_EQ(GateLoaderResolver(), half.AddressOf("LdrGetProcedureAddress"));
    EXPECT_EQ(system.Count(Copy(base - 0x800, 264)), 1u);
}

TEST_F(GateResolver, Is0WithoutAnNtdll) {
    half.modules[1].baseName = WIDE("other.dll");
    half.Build(gate);
    EXPECT_EQ(GateLoaderResolver(), 0u);
    EXPECT_EQ(system.Count(Copy(base, 64)), 0u);
}

TEST_F(GateResolver, Is0WithoutAnExportDirectory) {
    half.exports.clear();
    half.Build(gate);
    EXPECT_EQ(CallsBehindTheModule(), (Lines{Copy(base, 64), Copy(base + 0x80, 264)}));
    EXPECT_EQ(GateLoaderResolver(), 0u);
}

TEST_F(GateResolver, Is0WithoutThatName) {
    half.exports = {"LdrGetProcedureAddresS", "NtClose", "RtlZeroMemory"};
    half.Build(gate);
    EXPECT_EQ(GateLoaderResolver(), 0u);
    EXPECT_EQ(system.Count("GateCompare"), 3u);
}

TEST_F(GateResolver, Is0WithoutMemoryForAnyOfTheThreeTables) {
    half.Build(gate);
    GateNtdllBase();
    for (const uint32_t failing : {1u, 2u, 3u}) {
        system.arrayAllocations = 0;
        system.failingArrayAllocation = failing;
        EXPECT_EQ(GateLoaderResolver(), 0u) << failing; // what was taken is freed: the sanitizer looks after that
        EXPECT_EQ(system.Count("GateCompare"), 0u);
        EXPECT_EQ(system.Count("GateCopyIn(" + Hex(base + GateHalf::functionTable)), 0u); // nothing is copied then
        EXPECT_EQ(system.Count("GateCopyIn(" + Hex(base + GateHalf::ordinalTable)), 0u);
    }
    system.failingArrayAllocation = 0;
    EXPECT_EQ(GateLoaderResolver(), half.AddressOf("LdrGetProcedureAddress"));
}

TEST_F(GateResolver, EndsItsSearchWithTheFunctionsAndReadsNoNameBehindTheLast) {
    half.exports = {"A", "B"};
    half.Build(gate);
    auto directory = published::ImageExportDirectory{};
    directory.NumberOfFunctions = 50;
    directory.NumberOfNames = 2;
    directory.AddressOfFunctions = GateHalf::functionTable;
    directory.AddressOfNames = GateHalf::nameTable;
    directory.AddressOfNameOrdinals = GateHalf::ordinalTable;
    gate.memory.Put(base + GateHalf::exportDirectory, directory);
    EXPECT_EQ(GateLoaderResolver(), 0u);
    EXPECT_EQ(system.Count("GateCompare"), 2u);

    half.exports = {"A", "B", "C", "LdrGetProcedureAddress"};
    half.Build(ResetGate());
    directory.NumberOfFunctions = 3; // the match lies behind the bound
    directory.NumberOfNames = 4;
    gate.memory.Put(base + GateHalf::exportDirectory, directory);
    system.TakeCalls();
    EXPECT_EQ(GateLoaderResolver(), 0u);
    EXPECT_EQ(system.Count("GateCompare"), 3u);
}

TEST_F(GateResolver, AMatchEndsTheSearchAlsoWhenItsOrdinalLeadsBehindTheFunctions) {
    half.exports = {"A", "LdrGetProcedureAddress", "LdrGetProcedureAddress"};
    half.Build(gate);
    gate.memory.Put(base + GateHalf::ordinalTable + 2, uint16_t{4}); // of four functions
    EXPECT_EQ(GateLoaderResolver(), 0u);
    EXPECT_EQ(system.Count("GateCompare"), 2u);
    gate.memory.Put(base + GateHalf::ordinalTable + 2, uint16_t{3});
    EXPECT_NE(GateLoaderResolver(), 0u);
}

} // namespace
