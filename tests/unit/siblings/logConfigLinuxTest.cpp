// The log directory where Linux has ways of its own to name a library.
#include <dlfcn.h>
#include <gtest/gtest.h>

#include "unit/siblings/siblingLibrary.h"
#include "unit/siblings/temporaryFolder.h"

namespace siblingTest {

namespace {

namespace fs = std::filesystem;

TEST(LogConfigLinuxTest, aLibraryLoadedByARelativeNameKeepsItsDirectoryWhenTheProcessMovesOn) {
    SetVariable("ZELK_LOG_DIR", {});
    const TemporaryFolder folder;
    fs::create_directory(folder.Path() / "bin");
    fs::copy_file(LibraryFile("ZelkBase"), folder.Path() / "bin" / "libZelkBase.so");
    fs::current_path(folder.Path());
    const SiblingLibrary library(fs::path("bin/libZelkBase.so"));
    fs::current_path("/");
    const auto config = library.Make<ILogConfig>(SID_LogConfig);
    EXPECT_EQ(fs::path(config->GetConfigText(0x200002, 0)), folder.Path() / "bin" / "");
}

TEST(LogConfigLinuxTest, aCopyUnderAnotherNameFindsItself) {
    const TemporaryFolder folder;
    const fs::path copy = folder.Path() / "base.so.1";
    fs::copy_file(LibraryFile("ZelkBase"), copy);
    const SiblingLibrary original{std::string("ZelkBase")};
    const SiblingLibrary library(copy);
    const auto finder = library.Make<IModuleFinder>(SID_ModuleFinder);
    EXPECT_EQ(finder->FindModule(WIDE("module.base")), library.Handle());
    EXPECT_NE(library.Handle(), original.Handle());
}

} // namespace

} // namespace siblingTest
