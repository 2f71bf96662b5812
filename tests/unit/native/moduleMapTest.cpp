// The module map of a target, and finding modules in it.
#include <cstddef>
#include <stdexcept>

#include "kit/system/scriptedProcess/nativeFixture.h"
#include "kit/system/scriptedProcess/pairingFixture.h"
#include "unit/native/targetProcessAccess.h"

namespace {

using namespace scripted;

class ModuleMap : public PairingFixture {
protected:
    void SetUp() override {
        PairingFixture::SetUp();
        own = TargetIs32() ? ModuleKind32 : ModuleKind64;
    }

    // The target's list of its own width, which replaces the one before.
    void Load(const std::vector<LoadedModule>& list) {
        target->memory.Clear();
        WithImage([&](auto& image) { image.AddModules(target->memory, list); });
        MapImage();
    }

    // The other list of a 32-bit target of a 64-bit machine.
    void LoadOther(const std::vector<LoadedModule>& list) {
        image64.AddModules(target->memory, list);
        image64.Map(target->memory);
        image64.Put(target->memory);
    }

    bool HasBothLists() const { return TargetIs32() && GetParam() != Pairing::Machine32; }

    // Keys and bases of a map, in its order.
    static Lines LinesOf(const TargetProcess::ModuleMap& map) {
        Lines lines;
        for (const auto& [key, module] : map) {
            lines.push_back(Narrow(key.path.c_str()) + " " + std::to_string(key.kind) + " " + Hex(module->baseAddress));
        }
        return lines;
    }
    std::string Expected(const char* path, uint64_t base) const {
        return std::string(path) + " " + std::to_string(own) + " " + Hex(base);
    }
    Lines Loaded() { return LinesOf(Target().LoadAllModules()); }

    ModuleKind own = ModuleKind32;
};

TEST_P(ModuleMap, IsOrderedByCodeUnitsOfThePathWithTheShorterFirst) {
    Load({{0x10000, 1, WIDE("b")},
          {0x20000, 1, WIDE("ab")},
          {0x30000, 1, WIDE("B")},
          {0x40000, 1, WIDE("a")},
          {0x50000, 1, Text(1, WideChar{0xFFFF})},
          {0x60000, 1, Text(1, WideChar{0xE9})},
          {0x70000, 1, WIDE("abc")},
          {0x80000, 1, Text()}});
    std::vector<uint64_t> bases;
    for (const auto& [key, module] : Target().LoadAllModules()) {
        bases.push_back(module->baseAddress);
    }
    EXPECT_EQ(bases, (std::vector<uint64_t>{0x80000, 0x30000, 0x40000, 0x20000, 0x70000, 0x10000, 0x60000, 0x50000}));
}

TEST_P(ModuleMap, KeepsTheOldRecordOfAPathThatIsThere) {
    Load({{0x10000, 1, WIDE("a.dll")}, {0x20000, 2, WIDE("a.dll")}}); // twice in one list
    EXPECT_EQ(Loaded(), Lines{Expected("a.dll", 0x10000)});
    Load({{0x30000, 3, WIDE("a.dll")}});
    EXPECT_EQ(Loaded(), Lines{Expected("a.dll", 0x10000)});
}

TEST_P(ModuleMap, KeepsModulesThatWereUnloaded) {
    Load({{0x10000, 1, WIDE("a.dll")}, {0x20000, 2, WIDE("b.dll")}});
    Loaded();
    Load({{0x10000, 1, WIDE("a.dll")}, {0x30000, 3, WIDE("c.dll")}});
    EXPECT_EQ(Loaded(), (Lines{Expected("a.dll", 0x10000), Expected("b.dll", 0x20000), Expected("c.dll", 0x30000)}));
}

TEST_P(ModuleMap, IsAfterASecondLoadAsAfterTheFirst) {
    Load({{0x10000, 1, WIDE("a.dll")}, {0x20000, 2, WIDE("b.dll")}});
    Target().LoadModules(own);
    const auto first = Loaded();
    Target().LoadModules(own);
    EXPECT_EQ(Loaded(), first);
}

TEST_P(ModuleMap, HasAPathOfBothListsOncePerKindThe32BitOneFirst) {
    if (!HasBothLists()) {
        Load({{0x10000, 1, WIDE("a.dll")}});
        EXPECT_EQ(Loaded(), Lines{Expected("a.dll", 0x10000)}); // the one list that there is
        return;
    }
    Load({{0x10000, 1, WIDE("ntdll.dll")}, {0x20000, 1, WIDE("x.dll")}});
    LoadOther({{0x7FF000000000, 1, WIDE("ntdll.dll")}, {0x7FF000010000, 1, WIDE("wow64.dll")}});
    EXPECT_EQ(Loaded(), (Lines{"ntdll.dll 0 0x10000", "ntdll.dll 1 0x7ff000000000", "wow64.dll 1 0x7ff000010000",
                               "x.dll 0 0x20000"}));
}

TEST_P(ModuleMap, OfAllListsIsLoadedFromThe32BitOneFirst) {
    Load({{0x10000, 1, WIDE("a.dll")}});
    Target().LoadAllModules();
    const Lines calls = system.TakeCalls();
    EXPECT_EQ(calls.front(), PebLines().front());
    const auto second = std::find(calls.begin() + 1, calls.end(), Peb64Lines().front());
    EXPECT_EQ(second != calls.end(), HasBothLists());
}

// FindTargetModule

TEST_P(ModuleMap, FindsStrictlyByTheBaseAlone) {
    Load({{0x10000, 0x1000, WIDE("a.dll")}});
    const auto found = Target().FindTargetModule(0x10000, true, own);
    ASSERT_NE(found, nullptr);
    EXPECT_EQ(found->path, WIDE("a.dll"));
    EXPECT_EQ(Target().FindTargetModule(0x10001, true, own), nullptr);
    EXPECT_EQ(Target().FindTargetModule(0xFFFF, true, own), nullptr);
}

TEST_P(ModuleMap, FindsByAnAddressInsideFromTheBaseUpToTheLastByte) {
    Load({{0x10000, 0x1000, WIDE("a.dll")}});
    EXPECT_EQ(Target().FindTargetModule(0xFFFF, false, own), nullptr);
    EXPECT_NE(Target().FindTargetModule(0x10000, false, own), nullptr);
    EXPECT_NE(Target().FindTargetModule(0x10FFF, false, own), nullptr);
    EXPECT_EQ(Target().FindTargetModule(0x11000, false, own), nullptr);
}

TEST_P(ModuleMap, AddsBaseAndSizeIn64Bits) {
    Load({{0xFFFF0000, 0x20000, WIDE("a.dll")}});
    EXPECT_NE(Target().FindTargetModule(0x10000FFFF, false, own), nullptr);
    EXPECT_EQ(Target().FindTargetModule(0xFFFF, false, own), nullptr);
}

TEST_P(ModuleMap, AHitNeverTouchesTheTarget) {
    Load({{0x10000, 0x1000, WIDE("a.dll")}});
    Target().FindTargetModule(0x10000, true, own);
    system.TakeCalls();
    target->memory.Clear(); // unloaded since, and all else too
    EXPECT_NE(Target().FindTargetModule(0x10000, true, own), nullptr);
    EXPECT_NE(Target().FindTargetModule(0x10800, false, ModuleKindAuto), nullptr);
    EXPECT_EQ(system.TakeCalls(), Lines{});
}

TEST_P(ModuleMap, AMissReloadsTheListEachTime) {
    Load({{0x10000, 0x1000, WIDE("a.dll")}});
    Target();
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(Target().FindTargetModule(0x10800, true, own), nullptr);
        EXPECT_EQ(system.Count(PebLines().front()), 1u) << i;
        system.TakeCalls();
    }
}

TEST_P(ModuleMap, AModuleThatWasLoadedSinceIsFound) {
    Load({{0x10000, 0x1000, WIDE("a.dll")}});
    EXPECT_EQ(Target().FindTargetModule(0x20000, true, own), nullptr);
    Load({{0x10000, 0x1000, WIDE("a.dll")}, {0x20000, 0x1000, WIDE("b.dll")}});
    EXPECT_NE(Target().FindTargetModule(0x20000, true, ModuleKindAuto), nullptr);
}

TEST_P(ModuleMap, OfSeveralThatMatchTheFirstInItsOrderIsFound) {
    Load({{0x10000, 0x4000, WIDE("z.dll")}, {0x11000, 0x1000, WIDE("m.dll")}, {0x10000, 0x9000, WIDE("y.dll")}});
    const auto found = Target().FindTargetModule(0x11800, false, own);
    ASSERT_NE(found, nullptr);
    EXPECT_EQ(found->path, WIDE("m.dll"));
    EXPECT_EQ(Target().FindTargetModule(0x10000, true, own)->path, WIDE("y.dll"));
}

TEST_P(ModuleMap, AModuleOfTheOtherKindIsAHitIfItIsInTheMapAndAMissOtherwise) {
    if (!HasBothLists()) {
        Load({{0x10000, 0x1000, WIDE("a.dll")}});
        const auto other = TargetIs32() ? ModuleKind64 : ModuleKind32;
        EXPECT_EQ(Target().FindTargetModule(0x10000, true, other), nullptr); // there is no such list to load
        EXPECT_NE(Target().FindTargetModule(0x10000, true, own), nullptr);
        EXPECT_NE(Target().FindTargetModule(0x10000, true, other), nullptr); // in the map by now
        return;
    }
    Load({{0x10000, 0x1000, WIDE("a.dll")}});
    LoadOther({{0x7FF000000000, 0x1000, WIDE("b.dll")}});
    EXPECT_EQ(Target().FindTargetModule(0x7FF000000000, true, ModuleKind32), nullptr);
    EXPECT_EQ(Target().FindTargetModule(0x7FF000000000, true, ModuleKindAuto), nullptr);
    EXPECT_NE(Target().FindTargetModule(0x7FF000000000, true, ModuleKind64), nullptr);
    EXPECT_NE(Target().FindTargetModule(0x7FF000000000, true, ModuleKind32), nullptr);
    EXPECT_EQ(Target().FindTargetModule(0x7FF000000800, false, ModuleKind32)->kind, ModuleKind64);
}

TEST_P(ModuleMap, ARecordThatWasFoundOutlivesTheObject) {
    Load({{0x10000, 0x1000, WIDE("a.dll")}});
    std::shared_ptr<const ModuleData> found;
    {
        TargetProcess object(handle, 0);
        found = object.FindTargetModule(0x10000, true, ModuleKindAuto);
    }
    ASSERT_NE(found, nullptr);
    EXPECT_EQ(found->path, WIDE("a.dll"));
    EXPECT_EQ(found->imageSize, 0x1000u);
}

// GetMainModule

TEST_P(ModuleMap, TheMainModuleIsTheOneAtTheImageBaseOfThePebOfTheMachinesWidth) {
    image32.peb.ImageBaseAddress = 0x10000;
    image64.peb.ImageBaseAddress = 0x10000;
    if (GetParam() == Pairing::Machine32) {
        image64.peb.ImageBaseAddress = 0x20000;
    } else {
        image32.peb.ImageBaseAddress = 0x20000; // a 32-bit target is asked through its 64-bit PEB too
    }
    Load({{0x20000, 0x1000, WIDE("b.dll")}, {0x10000, 0x1000, WIDE("a.exe")}});
    if (HasBothLists()) {
        LoadOther({});
    }
    Target();
    const auto main = Target().GetMainModule();
    ASSERT_NE(main, nullptr);
    EXPECT_EQ(main->path, WIDE("a.exe"));
    const Lines calls = system.TakeCalls();
    const Lines first = GetParam() == Pairing::Machine32 ? PebLines() : Peb64Lines();
    EXPECT_EQ(Lines(calls.begin(), calls.begin() + 2), first);
}

TEST_P(ModuleMap, ThereIsNoMainModuleWithoutAPeb) {
    Load({{0x10000, 0x1000, WIDE("a.exe")}});
    target->peb32 = 0;
    target->peb64 = 0;
    EXPECT_EQ(Target().GetMainModule(), nullptr);
}

TEST_P(ModuleMap, WithoutAPebAModuleAtAddress0IsNotTheMainModule) {
    image32.peb.ImageBaseAddress = 0x10000;
    image64.peb.ImageBaseAddress = 0x10000;
    Load({{0, 0x1000, WIDE("b.dll")}, {0x10000, 0x1000, WIDE("a.exe")}});
    if (HasBothLists()) {
        LoadOther({});
    }
    ASSERT_NE(Target().GetMainModule(), nullptr); // all modules are loaded now
    target->peb32 = 0;
    target->peb64 = 0;
    EXPECT_EQ(Target().GetMainModule(), nullptr);
}

TEST_P(ModuleMap, ThereIsNoMainModuleWithoutTheFunctionThatFindsThePeb) {
    Load({{0x10000, 0x1000, WIDE("a.exe")}});
    system.missing = {"NtQueryInformationProcess", "NtWow64QueryInformationProcess64"};
    EXPECT_EQ(Target().GetMainModule(), nullptr);
    EXPECT_EQ(system.TakeCalls(), Lines{});
}

TEST_P(ModuleMap, ThereIsNoMainModuleWhenNoneBeginsAtTheImageBase) {
    image32.peb.ImageBaseAddress = 0x10800;
    image64.peb.ImageBaseAddress = 0x10800;
    Load({{0x10000, 0x1000, WIDE("a.exe")}});
    if (HasBothLists()) {
        LoadOther({});
    }
    EXPECT_EQ(Target().GetMainModule(), nullptr);
}

// A variant for a 32-bit machine that finds its blocks as other variants do, for a caller of either width.
class NativeOfA32BitMachine : public Native {
public:
    explicit NativeOfA32BitMachine(platform::Handle process) : Native(process, true) {}
};

class ModuleMapOf32BitTargets : public ModuleMap {};

TEST_P(ModuleMapOf32BitTargets, TheMainModuleOfA32BitMachineIsToldByThe32BitPebAndByNoOther) {
    image32.peb.ImageBaseAddress = 0x10000;
    image64.peb.ImageBaseAddress = 0x20000;
    Load({{0x20000, 0x1000, WIDE("b.dll")}, {0, 0x1000, WIDE("c.dll")}, {0x10000, 0x1000, WIDE("a.exe")}});
    TargetProcessAccess{Target()}.SetVariant(std::make_unique<NativeOfA32BitMachine>(handle));
    const auto main = Target().GetMainModule();
    ASSERT_NE(main, nullptr);
    EXPECT_EQ(main->path, WIDE("a.exe"));

    target->peb32 = 0; // all modules are known by now, one at 0 too, but nothing tells which one it is
    EXPECT_EQ(Target().GetMainModule(), nullptr);
}

INSTANTIATE_TEST_SUITE_P(Pairings, ModuleMapOf32BitTargets, testing::Values(PairingsWith32BitTargets().front()),
                         testing::PrintToStringParamName());
INSTANTIATE_TEST_SUITE_P(Pairings, ModuleMap, testing::ValuesIn(PairingsOfThisCaller()),
                         testing::PrintToStringParamName());

TEST(ModuleKey, IsOrderedByPathThenByKind) {
    const ModuleKey a32{WIDE("a"), ModuleKind32};
    const ModuleKey a64{WIDE("a"), ModuleKind64};
    const ModuleKey b32{WIDE("b"), ModuleKind32};
    EXPECT_LT(a32, a64);
    EXPECT_LT(a64, b32);
    EXPECT_EQ(a32, (ModuleKey{WIDE("a"), ModuleKind32}));
}

} // namespace
