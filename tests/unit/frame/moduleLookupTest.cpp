// Modules and their exports on the real system: what is loaded is found by its file name, and nothing is ever loaded.
#include "frame/baseServices.h"
#include "frame/factory.h"
#include "frame/serviceLookup.h"
#include "kit/siblings/dynamicLibrary.h"
#include "kit/siblings/scriptedSiblings.h"
#include "platform/platform.h"

#include <gtest/gtest.h>

namespace {

class ModuleLookup : public testing::Test {
protected:
    void SetUp() override { siblings.Reset(); }

    kit::ScriptedSiblings& siblings = kit::ScriptedSiblings::Instance();
};

TEST_F(ModuleLookup, LoadedLibraryIsFoundByItsFileName) {
    EXPECT_NE(platform::GetModuleHandleW(WIDE("ZelkBase.dll")), nullptr);
    EXPECT_NE(platform::GetModuleHandleW(WIDE("Ferrocore.dll")), nullptr);
}

TEST_F(ModuleLookup, LibraryThatIsNotLoadedIsNotFoundAndNotLoadedEither) {
    siblings.UnloadZelkBase();
    EXPECT_EQ(platform::GetModuleHandleW(WIDE("ZelkBase.dll")), nullptr);
    EXPECT_EQ(platform::GetModuleHandleW(WIDE("ZelkBase.dll")), nullptr);
    EXPECT_EQ(platform::GetModuleHandleW(WIDE("noSuchLibrary.dll")), nullptr);
}

TEST_F(ModuleLookup, HandleIsNotCounted) {
    for (int i = 0; i < 3; ++i) {
        ASSERT_NE(platform::GetModuleHandleW(WIDE("ZelkBase.dll")), nullptr);
    }
    siblings.UnloadZelkBase();
    EXPECT_EQ(platform::GetModuleHandleW(WIDE("ZelkBase.dll")), nullptr) << "the one load is taken back";
}

TEST_F(ModuleLookup, ExportIsFoundByItsName) {
    void* const module = platform::GetModuleHandleW(WIDE("ZelkBase.dll"));
    ASSERT_NE(module, nullptr);
    const auto factory = FindFactory(module);
    ASSERT_NE(factory, nullptr);
    void* out = nullptr;
    EXPECT_EQ(factory(&SID_ModuleFinder, &out), 0U);
    EXPECT_EQ(siblings.calls.Take(), std::vector<std::string>{"create IModuleFinder"});
}

TEST_F(ModuleLookup, ExportThatIsMissingGivesNull) {
    siblings.LoadZelkBaseWithoutFactory();
    void* const module = platform::GetModuleHandleW(WIDE("ZelkBase.dll"));
    ASSERT_NE(module, nullptr);
    EXPECT_EQ(FindFactory(module), nullptr);
}

TEST_F(ModuleLookup, ExportOfALibraryThatTheModuleDependsOnIsNotItsOwn) {
    const kit::DynamicLibrary library(kit::ProgramFolder() / "siblings" / kit::LibraryFile("borrowedFactory"));
    const auto borrowed =
        reinterpret_cast<CreateZelkObjectFunction>(platform::GetProcAddress(library.Handle(), "BorrowedFactory"));
    ASSERT_NE(borrowed, nullptr);
    void* out = nullptr;
    borrowed(&SID_FerrocoreService, &out);
    ASSERT_EQ(siblings.calls.Take(), std::vector<std::string>{"create FerrocoreService"}) << "it depends on Ferrocore";
    EXPECT_EQ(FindFactory(library.Handle()), nullptr);
}

TEST_F(ModuleLookup, BindingMeetsTheRealLibrariesAsTheyCome) {
    siblings.UnloadZelkBase();
    siblings.UnloadFerrocore();
    CBaseServices* const holder = CBaseServices::Instance();
    EXPECT_FALSE(holder->m_moduleFinder);
    EXPECT_EQ(FindBaseModuleFactory(), nullptr);
    siblings.LoadZelkBaseWithoutFactory();
    EXPECT_EQ(FindBaseModuleFactory(), nullptr);
    EXPECT_EQ(siblings.calls.Take(), std::vector<std::string>());
    siblings.LoadZelkBase();
    EXPECT_NE(FindBaseModuleFactory(), nullptr);
    EXPECT_EQ(siblings.calls.Take(),
              (std::vector<std::string>{"create IModuleFinder", "create BaseServiceTwo", "create BaseServiceOne",
                                        "create BaseServiceThree", "IModuleFinder.FindModule(module.base)"}));
    siblings.LoadFerrocore();
    EXPECT_NE(FindBaseModuleFactory(), nullptr);
    EXPECT_EQ(siblings.calls.Take(),
              (std::vector<std::string>{"create FerrocoreService", "IModuleFinder.FindModule(module.base)"}));
}

} // namespace
