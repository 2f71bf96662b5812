// The log directory for library names that only Linux has.
#include <dlfcn.h>
#include <gtest/gtest.h>

#include "unit/siblings/logFolder.h"
#include "unit/siblings/siblingLibrary.h"

namespace siblingTest {

namespace {

namespace fs = std::filesystem;

TEST(LogConfigLinuxTest, aRelativeLibraryNameIsResolvedBeforeTheCurrentDirectoryChanges) {
    SetVariable("ZELK_LOG_DIR", {});
    const TestFolder folder;
    fs::create_directory(folder.Path() / "bin");
    fs::copy_file(SiblingLibrary::File("ZelkBase"), folder.Path() / "bin" / "libZelkBase.so");
    fs::current_path(folder.Path());
    const SiblingLibrary library(fs::path("bin/libZelkBase.so"));
    fs::current_path("/");
    const auto config = library.Make<ILogConfig>(SID_LogConfig);
    EXPECT_EQ(fs::path(config->GetConfigText(0x200002, 0)), folder.Path() / "bin" / "");
}

TEST(LogConfigLinuxTest, aRenamedCopyFindsItself) {
    const TestFolder folder;
    const fs::path copy = folder.Path() / "base.so.1";
    fs::copy_file(SiblingLibrary::File("ZelkBase"), copy);
    const SiblingLibrary original{std::string("ZelkBase")};
    const SiblingLibrary library(copy);
    const auto finder = library.Make<IModuleFinder>(SID_ModuleFinder);
    EXPECT_EQ(finder->FindModule(WIDE("module.base")), library.Handle());
    EXPECT_NE(library.Handle(), original.Handle());
}

} // namespace

} // namespace siblingTest
