#include "system/fileIdentity.h"

#include <gtest/gtest.h>

#include "unit/host/identityOf.h"
#include "unit/host/temporaryDirectory.h"

using namespace mordhost;
using kit::TemporaryDirectory;
using mordhostTest::IdentityOf;

namespace {

class Identity : public testing::Test {
protected:
    Identity() {
        std::filesystem::create_directory(there);
        directory.Write("here", "");
        directory.Write("there/inside", "");
    }

    const TemporaryDirectory directory;
    const std::filesystem::path there = directory.Path() / "there";
};

} // namespace

TEST_F(Identity, DoesNotDependOnTheSpellingOfTheName) {
    const FileIdentity file = IdentityOf(there / "inside");
    EXPECT_EQ(file.kind, FileIdentity::Kind::regular);
    EXPECT_TRUE(IsSameFile(file, IdentityOf(directory.Path() / "there" / "." / "inside")));
    EXPECT_TRUE(IsSameFile(file, IdentityOf(there / ".." / "there" / "inside")));
    EXPECT_FALSE(IsSameFile(file, IdentityOf(directory.Path() / "here")));
}

TEST_F(Identity, IsTheSameForAHardLink) {
    std::filesystem::create_hard_link(directory.Path() / "here", there / "second");
    EXPECT_TRUE(IsSameFile(IdentityOf(directory.Path() / "here"), IdentityOf(there / "second")));
}

TEST_F(Identity, OfAnAbsentFileIsItsNameInItsDirectory) {
    const FileIdentity absent = IdentityOf(there / "new");
    EXPECT_EQ(absent.kind, FileIdentity::Kind::absent);
    EXPECT_TRUE(IsSameFile(absent, IdentityOf(there / ".." / "there" / "new")));
    EXPECT_FALSE(IsSameFile(absent, IdentityOf(there / "newer")));
    EXPECT_FALSE(IsSameFile(absent, IdentityOf(directory.Path() / "new")));
    EXPECT_FALSE(IsSameFile(absent, IdentityOf(there))) << "the directory itself";
    EXPECT_FALSE(IsSameFile(IdentityOf(there), absent));
}

TEST_F(Identity, OfABareNameIsInTheCurrentDirectory) {
    EXPECT_TRUE(
        IsSameFile(IdentityOf("mordhostTest-none"), IdentityOf(std::filesystem::current_path() / "mordhostTest-none")));
}

TEST_F(Identity, OfADirectoryHasItsKind) {
    EXPECT_EQ(IdentityOf(there).kind, FileIdentity::Kind::directory);
}

TEST_F(Identity, FailsWithoutADirectory) {
    FileIdentity identity;
    EXPECT_EQ(Identify(directory.Path() / "no" / "such", identity).message(), "No such file or directory");
    EXPECT_TRUE(Identify(directory.Path() / "here" / "below", identity));
    EXPECT_TRUE(Identify(directory.Path() / "none" / "", identity));
}
