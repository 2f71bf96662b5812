// Names that differ in case alone, and names of devices. Windows alone.
#include <gtest/gtest.h>

#include "host/identityOf.h"
#include "host/temporaryDirectory.h"
#include "system/fileIdentity.h"

using namespace mordhost;
using mordhostTest::IdentityOf;

TEST(IdentityWin32, NamesAreComparedWithoutTheirCase) {
    const mordhostTest::TemporaryDirectory directory;
    directory.Write("file", "");
    EXPECT_TRUE(IsSameFile(IdentityOf(directory.Path() / "file"), IdentityOf(directory.Path() / "FILE")));
    EXPECT_TRUE(IsSameFile(IdentityOf(directory.Path() / "new"), IdentityOf(directory.Path() / "NEW")));
}

TEST(IdentityWin32, DevicesAreNoFiles) {
    EXPECT_EQ(IdentityOf("NUL").kind, FileIdentity::Kind::device);
    EXPECT_EQ(IdentityOf("nul").kind, FileIdentity::Kind::device);
    EXPECT_EQ(IdentityOf("COM1").kind, FileIdentity::Kind::device);
}
