// The loader lists of a target, for every pairing.
#include <cstddef>
#include <stdexcept>

#include "kit/system/scriptedProcess/nativeFixture.h"
#include "kit/system/scriptedProcess/pairingFixture.h"

namespace {

using namespace scripted;

const std::vector<LoadedModule> modules = {
    {0x400000, 0x5000, WIDE("C:\\dir\\Program.exe")},
    {0x77000000, 0x190000, WIDE("C:\\Windows\\ntdll.dll")},
    {0x76000000, 0xF0000, WIDE("C:\\Windows\\kernel32.dll")},
};

class ModuleLists : public PairingFixture {
protected:
    void SetUp() override {
        PairingFixture::SetUp();
        own = TargetIs32() ? ModuleKind32 : ModuleKind64;
    }

    void Load(const std::vector<LoadedModule>& list) {
        WithImage([&](auto& image) { image.AddModules(target->memory, list); });
        MapImage();
    }

    static std::string Line(const ModuleData& module) {
        return Hex(module.baseAddress) + " " + Hex(module.imageSize) + " " + std::to_string(module.kind) + " " +
               Narrow(module.path.c_str());
    }
    static Lines LinesOf(const TargetProcess::ModuleList& list) {
        Lines lines;
        for (const auto& module : list) {
            lines.push_back(Line(*module));
        }
        return lines;
    }
    std::string Expected(const LoadedModule& module) const {
        return Hex(module.base) + " " + Hex(module.size) + " " + std::to_string(own) + " " +
               Narrow(module.path.c_str());
    }
    Lines ListedOwn() { return LinesOf(Target().ListModules(own)); }

    uint64_t LdrAddress() {
        return WithImage([](auto& image) { return uint64_t{image.ldrAddress}; });
    }
    uint64_t EntryAddress(size_t i) {
        return WithImage([=](auto& image) { return uint64_t{image.EntryAddress(i)}; });
    }
    uint64_t NameAddress(size_t i) {
        return WithImage([=](auto& image) { return uint64_t{image.NameAddress(i)}; });
    }
    void PutEntry(size_t i, const LoadedModule& module, uint64_t next) {
        WithImage([&](auto& image) {
            target->memory.Put(image.EntryAddress(i),
                               image.Entry(i, module, static_cast<decltype(image.pebAddress)>(next)));
        });
    }

    ModuleKind own = ModuleKind32;
};

class ModuleListsOf32BitTargets : public ModuleLists {};

TEST_P(ModuleLists, GiveTheModulesInLoadOrder) {
    Load(modules);
    EXPECT_EQ(ListedOwn(), (Lines{Expected(modules[0]), Expected(modules[1]), Expected(modules[2])}));
}

TEST_P(ModuleLists, AreWalkedByReadsOfTheSizesAndInTheOrderTold) {
    Load({modules[0], modules[1]});
    Target().ListModules(own);
    const uint64_t entry = TargetIs32() ? 80 : 152;
    const uint64_t link = TargetIs32() ? 4 : 8;
    EXPECT_EQ(system.TakeCalls(),
              Join({PebLines(), ReadLines(LdrAddress(), TargetIs32() ? 48 : 88), ReadLines(EntryAddress(0), entry),
                    ReadLines(NameAddress(0), modules[0].path.size() * 2), ReadLines(EntryAddress(0), link),
                    ReadLines(EntryAddress(1), entry), ReadLines(NameAddress(1), modules[1].path.size() * 2),
                    ReadLines(EntryAddress(1), link)}));
}

TEST_P(ModuleLists, OfAutoAreThoseThatFitTheTarget) {
    Load(modules);
    EXPECT_EQ(LinesOf(Target().ListModules(ModuleKindAuto)), ListedOwn());
}

TEST_P(ModuleLists, OfAnyOtherKindAreThe32BitOnes) {
    Load(modules);
    EXPECT_EQ(LinesOf(Target().ListModules(static_cast<ModuleKind>(77))), LinesOf(Target().ListModules(ModuleKind32)));
}

TEST_P(ModuleLists, WhoseHeadLeadsToItselfAreEmpty) {
    MapImage();
    EXPECT_EQ(ListedOwn(), Lines{});
    EXPECT_EQ(system.TakeCalls(), Join({PebLines(), ReadLines(LdrAddress(), TargetIs32() ? 48 : 88)}));
}

TEST_P(ModuleLists, AreEmptyWithoutAPeb) {
    Load(modules);
    target->peb32 = 0;
    target->peb64 = 0;
    EXPECT_EQ(ListedOwn(), Lines{});
}

// The cleared image leads to loader data at 0, which is not there.
TEST_P(ModuleLists, AreEmptyWhenThePebBlockCannotBeRead) {
    Load(modules);
    for (const uint32_t status : negativeStatuses) {
        system.byAddress = {{PebAddress(), {status}}};
        Target();
        system.TakeCalls();
        EXPECT_EQ(ListedOwn(), Lines{}) << Hex(status);
        const Lines dataAt0 = GetParam() == Pairing::Wow64CallerOf64 ? Lines{} : ReadLines(0, TargetIs32() ? 48 : 88);
        EXPECT_EQ(system.TakeCalls(), Join({PebLines(), dataAt0}));
    }
}

TEST_P(ModuleLists, AreEmptyWithoutTheFunctionThatFindsThePeb) {
    Load(modules);
    system.missing = {PebLines().front().substr(0, PebLines().front().find('('))};
    EXPECT_EQ(ListedOwn(), Lines{});
}

TEST_P(ModuleLists, AreEmptyForEveryStatusBut0OfTheReadOfTheLoaderData) {
    Load(modules);
    for (const uint32_t status : negativeStatuses) {
        system.byAddress = {{LdrAddress(), {status, true}}};
        EXPECT_EQ(ListedOwn(), Lines{}) << Hex(status);
    }
    for (const uint32_t status : positiveStatuses) { // stricter than every other read
        system.byAddress = {{LdrAddress(), {status, true}}};
        EXPECT_EQ(ListedOwn(), Lines{}) << Hex(status);
    }
}

TEST_P(ModuleLists, HaveARecordWithoutAnythingForAnEntryThatCannotBeRead) {
    Load(modules);
    // The entry fails as a whole; its link can be read.
    const uint64_t link = TargetIs32() ? 4 : 8;
    system.byRange[{EntryAddress(1), TargetIs32() ? 80 : 152}] = {accessViolation};
    EXPECT_EQ(ListedOwn(), (Lines{Expected(modules[0]), "0x0 0x0 " + std::to_string(own) + " ", Expected(modules[2])}));
    EXPECT_EQ(system.Count(ReadLines(EntryAddress(1), link).back()), 1u);
}

TEST_P(ModuleLists, HaveARecordWithoutAPathForANameThatCannotBeRead) {
    Load(modules);
    system.byAddress[NameAddress(1)] = {accessViolation};
    LoadedModule nameless = modules[1];
    nameless.path.clear();
    EXPECT_EQ(ListedOwn(), (Lines{Expected(modules[0]), Expected(nameless), Expected(modules[2])}));
}

TEST_P(ModuleLists, EndAtALinkThatCannotBeReadWithWhatWasFoundSoFar) {
    Load(modules);
    for (const uint32_t status : negativeStatuses) {
        system.byRange = {{{EntryAddress(1), TargetIs32() ? 4 : 8}, {status, true}}};
        EXPECT_EQ(ListedOwn(), (Lines{Expected(modules[0]), Expected(modules[1])})) << Hex(status);
    }
    system.byRange = {{{EntryAddress(1), TargetIs32() ? 4 : 8}, {0x102, true}}};
    EXPECT_EQ(ListedOwn().size(), 3u);
}

TEST_P(ModuleLists, ThatLeadIntoMemoryThatIsNotThereEndWithAnEmptyRecord) {
    Load(modules);
    PutEntry(1, modules[1], EntryAddress(7));
    EXPECT_EQ(ListedOwn(), (Lines{Expected(modules[0]), Expected(modules[1]), "0x0 0x0 " + std::to_string(own) + " "}));
}

TEST_P(ModuleLists, TakeANameUpToItsFirstNul) {
    LoadedModule odd = modules[1];
    odd.path = WIDE("C:\\a.dll");
    odd.path += WideChar{};
    odd.path += WIDE("more");
    Load({modules[0], odd});
    EXPECT_EQ(Narrow(Target().ListModules(own)[1]->path.c_str()), "C:\\a.dll");
    EXPECT_EQ(Target().ListModules(own)[1]->path.size(), 8u);
}

TEST_P(ModuleLists, ReadANameUpToTheBuffersSizeAndNoFurther) {
    for (const size_t units : {511u, 512u, 513u, 5000u, 32767u}) {
        target->memory.Clear();
        LoadedModule one = modules[0];
        one.path = Text(units, WIDE('p'));
        Load({one});
        system.TakeCalls();
        const auto list = Target().ListModules(own);
        ASSERT_EQ(list.size(), 1u);
        EXPECT_EQ(list[0]->path, Text(std::min<size_t>(units, 512), WIDE('p')));
        EXPECT_EQ(system.Count(ReadLines(NameAddress(0), std::min<size_t>(units * 2, 1024)).back()), 1u);
    }
}

TEST_P(ModuleLists, ThatRunInACycleAwayFromTheHeadGoOnAsLongAsReadsSucceed) {
    Load(modules);
    PutEntry(2, modules[2], EntryAddress(1));
    system.readLimit = 400;
    const auto lines = ListedOwn();
    EXPECT_GT(lines.size(), 120u);
    EXPECT_EQ(lines[0], Expected(modules[0]));
    EXPECT_EQ(lines[101], Expected(modules[1]));
    EXPECT_EQ(lines[102], Expected(modules[2]));
}

TEST_P(ModuleListsOf32BitTargets, AboveTwoGiBAreReadAtTheirZeroExtendedAddresses) {
    image32.ldrAddress = 0x90000000;
    image32.entriesAddress = 0xA0000000;
    image32.peb.Ldr = image32.ldrAddress;
    const std::vector<LoadedModule> high = {{0x80400000, 0x5000, WIDE("C:\\dir\\Program.exe")},
                                            {0xF7000000, 0x190000, WIDE("C:\\Windows\\ntdll.dll")}};
    Load(high);
    EXPECT_EQ(ListedOwn(), (Lines{Expected(high[0]), Expected(high[1])}));
    EXPECT_EQ(system.Count(ReadLines(0x90000000, 48).back()), 1u);
    EXPECT_EQ(system.Count(ReadLines(0xA0010000, 80).back()), 1u);
    EXPECT_EQ(system.Count(ReadLines(0xA0011000, high[1].path.size() * 2).back()), 1u);
}

TEST_P(ModuleLists, ThatDoNotFitTheTargetAreThoseOfItsOtherHalf) {
    Load(modules);
    const auto kind = TargetIs32() ? ModuleKind64 : ModuleKind32;
    if (GetParam() == Pairing::Machine32 || !TargetIs32()) { // which a 32-bit machine, and a 64-bit process, lack
        EXPECT_EQ(LinesOf(Target().ListModules(kind)), Lines{});
        EXPECT_EQ(system.Count("ReadProcessMemory"), 0u);
        return;
    }
    image64.AddModules(target->memory, {{0x7FFB00000000, 0x1F0000, WIDE("C:\\Windows\\ntdll.dll")}});
    image64.Map(target->memory);
    image64.Put(target->memory);
    EXPECT_EQ(LinesOf(Target().ListModules(ModuleKind64)), Lines{"0x7ffb00000000 0x1f0000 1 C:\\Windows\\ntdll.dll"});
}

TEST_P(ModuleLists, LeaveTheModuleMapAlone) {
    Load(modules);
    Target().ListModules(own);
    target->memory.Clear();
    EXPECT_TRUE(Target().LoadAllModules().empty());
}

TEST_P(ModuleLists, RecordsOutliveTheObject) {
    Load(modules);
    std::shared_ptr<const ModuleData> kept;
    {
        TargetProcess object(handle, 0);
        kept = object.ListModules(own).at(1);
    }
    EXPECT_EQ(Line(*kept), Expected(modules[1]));
}

INSTANTIATE_TEST_SUITE_P(Pairings, ModuleListsOf32BitTargets, testing::ValuesIn(PairingsWith32BitTargets()),
                         testing::PrintToStringParamName());
INSTANTIATE_TEST_SUITE_P(Pairings, ModuleLists, testing::ValuesIn(PairingsOfThisCaller()),
                         testing::PrintToStringParamName());

} // namespace
