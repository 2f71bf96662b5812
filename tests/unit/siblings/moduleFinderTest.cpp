#include <gtest/gtest.h>

#include "unit/siblings/siblingLibrary.h"

namespace siblingTest {

namespace {

class ModuleFinderTest : public testing::Test {
protected:
    const SiblingLibrary library{std::string("ZelkBase")};
    const ServiceHolder<IModuleFinder> finder = library.Make<IModuleFinder>(SID_ModuleFinder);
};

TEST_F(ModuleFinderTest, ReturnsItsLibraryForModuleBase) {
    EXPECT_EQ(finder->FindModule(WIDE("module.base")), library.Handle());
}

TEST_F(ModuleFinderTest, ReturnsNullForAnUnknownKey) {
    for (const WideChar* const key : {WIDE("module.ferrocore"), WIDE("module.base.win32"), WIDE("module.bas"),
                                      WIDE("MODULE.BASE"), WIDE("module.base "), WIDE("ZelkBase.dll"), WIDE("")}) {
        EXPECT_EQ(finder->FindModule(key), nullptr) << std::filesystem::path(key);
    }
}

TEST_F(ModuleFinderTest, ReturnsNullForANullKey) {
    EXPECT_EQ(finder->FindModule(nullptr), nullptr);
}

} // namespace

} // namespace siblingTest
