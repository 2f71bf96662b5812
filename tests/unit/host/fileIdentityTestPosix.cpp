// Links, and names that differ only in case. Posix only.
#include <gtest/gtest.h>

#include "system/fileIdentity.h"
#include "unit/host/identityOf.h"
#include "unit/host/temporaryDirectory.h"

using namespace mordhost;
using mordhostTest::IdentityOf;

TEST(IdentityPosix, FollowsLinks) {
    const kit::TemporaryDirectory directory;
    directory.Write("file", "");
    std::filesystem::create_directory(directory.Path() / "there");
    std::filesystem::create_directory_symlink("there", directory.Path() / "way");
    std::filesystem::create_symlink("../file", directory.Path() / "there" / "link");
    std::filesystem::create_symlink("there/none", directory.Path() / "toNothing");
    EXPECT_TRUE(IsSameFile(IdentityOf(directory.Path() / "way" / "link"), IdentityOf(directory.Path() / "file")));
    EXPECT_TRUE(IsSameFile(IdentityOf(directory.Path() / "toNothing"), IdentityOf(directory.Path() / "way" / "none")));
}

TEST(IdentityPosix, ComparesNamesWithTheirCase) {
    const kit::TemporaryDirectory directory;
    EXPECT_FALSE(IsSameFile(IdentityOf(directory.Path() / "new"), IdentityOf(directory.Path() / "NEW")));
}
