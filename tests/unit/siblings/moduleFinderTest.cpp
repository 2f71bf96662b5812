#include <gtest/gtest.h>

#include "unit/siblings/siblingLibrary.h"

namespace siblingTest {

namespace {

class ModuleFinderTest : public testing::Test {
protected:
    const SiblingLibrary library{std::string("ZelkBase")};
    const ServiceHolder<IModuleFinder> finder = library.Make<IModuleFinder>(SID_ModuleFinder);
};

TEST_F(ModuleFinderTest, givesItsOwnLibraryForModuleBase) {
    EXPECT_EQ(finder->FindModule(WIDE("module.base")), library.Handle());
}

TEST_F(ModuleFinderTest, givesAModuleWhoseFactoryMakesTheServicesBehindTheKey) {
    void* const module = finder->FindModule(WIDE("module.base"));
    const auto factory = reinterpret_cast<CreateZelkObjectFunction>(FindExport(module, "CreateZelkObject"));
    ASSERT_NE(factory, nullptr);
    for (const GUID& id : {SID_MachineId, SID_LogConfig, SID_LogWriter}) {
        void* object = nullptr;
        ASSERT_EQ(factory(&id, &object), 0U);
        static_cast<ISmartUnknown*>(object)->Release();
    }
}

TEST_F(ModuleFinderTest, givesNullForEveryOtherKey) {
    for (const WideChar* const key : {WIDE("module.ferrocore"), WIDE("module.base.win32"), WIDE("module.bas"),
                                      WIDE("MODULE.BASE"), WIDE("module.base "), WIDE("ZelkBase.dll"), WIDE("")}) {
        EXPECT_EQ(finder->FindModule(key), nullptr) << std::filesystem::path(key);
    }
}

TEST_F(ModuleFinderTest, givesNullForANullKey) {
    EXPECT_EQ(finder->FindModule(nullptr), nullptr);
}

} // namespace

} // namespace siblingTest
