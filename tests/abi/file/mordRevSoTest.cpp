// The built libmordRev.so, as a file.
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "abi/edge.h"
#include "abi/file/elfFile.h"

namespace {

using namespace edge;

class MordRevSo : public ::testing::Test {
protected:
    const ElfFile file{LibraryPath()};
};

TEST_F(MordRevSo, ExportsTheFactoryAlone) {
    EXPECT_EQ(file.exports, std::vector<std::string>{"CreateZelkObject"});
}

TEST_F(MordRevSo, BearsTheNameUnderWhichItIsLookedFor) {
    EXPECT_EQ(file.soName, "libmordRev.so");
}

TEST_F(MordRevSo, NeedsTheLibrariesOfCompilerAndSystemOnly) {
    const std::set<std::string> known = {"libstdc++.so", "libgcc_s.so",        "libc.so",
                                         "libm.so",      "ld-linux-x86-64.so", "ld-linux-aarch64.so"};
    for (const std::string& library : file.needed) {
        EXPECT_TRUE(known.contains(library.substr(0, library.find(".so") + 3))) << library;
    }
}

TEST_F(MordRevSo, NeedsNoWritableCodeAndNoExecutableStackAndLooksInNoFolderOfItsOwn) {
    EXPECT_FALSE(file.hasTextRelocations);
    EXPECT_FALSE(file.hasExecutableStack);
    EXPECT_FALSE(file.hasRunPath);
}

TEST_F(MordRevSo, NamesNoFolderOfTheBuildMachine) {
    const FileBytes bytes(LibraryPath());
    EXPECT_FALSE(bytes.Contains(ABI_SOURCE_FOLDER));
    EXPECT_FALSE(bytes.Contains(ABI_BUILD_FOLDER));
}

} // namespace
