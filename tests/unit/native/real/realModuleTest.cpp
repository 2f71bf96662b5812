// Loader lists and module map of real processes of both widths.
#include <stdexcept>

#include "unit/native/real/realChildFixture.h"

namespace {

class RealModules : public RealChildFixture {
protected:
    static std::vector<std::string> NamesOf(const TargetProcess::ModuleList& list) {
        std::vector<std::string> names;
        for (const auto& module : list) {
            const std::string path = kit::ToNarrow(module->path);
            names.push_back(LowerCase(path.substr(path.find_last_of('\\') + 1)));
        }
        return names;
    }
    static bool Has(const TargetProcess::ModuleList& list, const std::string& name) {
        const auto names = NamesOf(list);
        return std::find(names.begin(), names.end(), name) != names.end();
    }
};

TEST_P(RealModules, OfTheChildsWidthBeginWithTheProgramAndHoldTheSystemsLibraries) {
    const auto list = Target().ListModules(ModuleKindAuto);
    ASSERT_GE(list.size(), 3u);
    EXPECT_EQ(LowerCase(kit::ToNarrow(list[0]->path)), LowerCase(Program()));
    EXPECT_TRUE(Has(list, "ntdll.dll"));
    EXPECT_TRUE(Has(list, "kernel32.dll"));
    for (const auto& module : list) {
        EXPECT_EQ(module->kind, OwnKind());
        EXPECT_NE(module->baseAddress, 0u);
        EXPECT_NE(module->imageSize, 0u);
        if (ChildIs32Bit()) {
            EXPECT_LE(module->baseAddress + module->imageSize, 0x100000000u);
        }
    }
}

TEST_P(RealModules, OfA32BitChildAreThoseOfTwoListsAndOfA64BitOneThoseOfOne) {
    const auto list32 = Target().ListModules(ModuleKind32);
    const auto list64 = Target().ListModules(ModuleKind64);
    EXPECT_TRUE(Has(list64, "ntdll.dll"));
    if (!ChildIs32Bit()) {
        EXPECT_TRUE(list32.empty());
        return;
    }
    EXPECT_TRUE(Has(list32, "ntdll.dll"));
    const auto ntdll = std::find_if(list64.begin(), list64.end(), [](const auto& module) {
        return LowerCase(kit::ToNarrow(module->path)).ends_with("\\ntdll.dll");
    });
    EXPECT_GT((*ntdll)->baseAddress, 0xFFFFFFFFu); // the other half
    EXPECT_EQ((*ntdll)->kind, ModuleKind64);
}

TEST_P(RealModules, OfBothListsStandInTheMapOncePerKind) {
    TargetProcess& target = Target();
    const auto list32 = target.ListModules(ModuleKind32);
    const auto list64 = target.ListModules(ModuleKind64);
    const auto& map = target.LoadAllModules();
    EXPECT_EQ(map.size(), list32.size() + list64.size());
    for (const auto& list : {list32, list64}) {
        for (const auto& module : list) {
            ASSERT_EQ(map.count(ModuleKey{module->path, module->kind}), 1u);
            EXPECT_EQ(map.at(ModuleKey{module->path, module->kind})->baseAddress, module->baseAddress);
        }
    }
    const size_t size = map.size();
    EXPECT_EQ(target.LoadAllModules().size(), size); // nothing new was loaded
}

TEST_P(RealModules, AreFoundByTheirAddresses) {
    TargetProcess& target = Target();
    const auto program = target.ListModules(ModuleKindAuto).at(0);
    const uint64_t base = program->baseAddress;
    EXPECT_EQ(target.FindTargetModule(base, true, ModuleKindAuto)->path, program->path);
    EXPECT_EQ(target.FindTargetModule(base + 1, true, ModuleKindAuto), nullptr);
    EXPECT_EQ(target.FindTargetModule(base + program->imageSize - 1, false, ModuleKindAuto)->path, program->path);
    const auto behind = target.FindTargetModule(base + program->imageSize, false, ModuleKindAuto);
    EXPECT_TRUE(behind == nullptr || behind->path != program->path);
}

TEST_P(RealModules, TheMainModuleIsTheProgram) {
    const auto main = Target().GetMainModule();
    ASSERT_NE(main, nullptr);
    EXPECT_EQ(LowerCase(kit::ToNarrow(main->path)), LowerCase(Program()));
    EXPECT_EQ(main->kind, OwnKind());
}

TEST_P(RealModules, AreCutOffWhereTheListLeadsIntoMemoryThatCannotBeRead) {
    child->Tell("linkToUnreadable");
    const auto list = Target().ListModules(ModuleKindAuto);
    ASSERT_EQ(list.size(), 2u);
    EXPECT_EQ(LowerCase(kit::ToNarrow(list[0]->path)), LowerCase(Program()));
    EXPECT_EQ(list[1]->baseAddress, 0u); // what could not be read still makes a record
    EXPECT_EQ(list[1]->imageSize, 0u);
    EXPECT_TRUE(list[1]->path.empty());
}

TEST_P(RealModules, GoOnBehindAnEntryThatCannotBeReadButForItsLink) {
    const auto before = NamesOf(Target().ListModules(ModuleKindAuto));
    child->Tell("addEntryOfWhichOnlyTheLinkIsReadable");
    const auto list = Target().ListModules(ModuleKindAuto);
    auto expected = before;
    expected.insert(expected.begin() + 1, "");
    EXPECT_EQ(NamesOf(list), expected);
    EXPECT_EQ(list.at(1)->baseAddress, 0u);
}

TEST_P(RealModules, ANameThatIsLongerThanTheBufferIsCutThere) {
    for (const size_t size : {1022u, 1024u, 1026u, 60000u}) {
        child->Tell("setModuleName " + std::to_string(size));
        const auto list = Target().ListModules(ModuleKindAuto);
        ASSERT_GE(list.size(), 3u);
        EXPECT_EQ(kit::ToNarrow(list[0]->path), std::string(std::min<size_t>(size, 1024) / 2, 'p'));
    }
}

TEST_P(RealModules, OfAChildThatHasEndedAreNone) {
    TargetProcess& target = Target();
    child->End();
    EXPECT_TRUE(target.ListModules(ModuleKind32).empty());
    EXPECT_TRUE(target.ListModules(ModuleKind64).empty());
    EXPECT_EQ(target.GetMainModule(), nullptr);
}

INSTANTIATE_TEST_SUITE_P(Children, RealModules, testing::Values(32, 64), ChildName);

} // namespace
