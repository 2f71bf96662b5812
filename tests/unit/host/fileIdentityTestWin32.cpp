// Names that differ only in case, and names of devices. Windows only.
#include <gtest/gtest.h>
#include <windows.h>

#include "system/fileIdentity.h"
#include "unit/host/identityOf.h"
#include "unit/host/temporaryDirectory.h"

using namespace mordhost;
using mordhostTest::IdentityOf;

TEST(IdentityWin32, NamesAreComparedWithoutTheirCase) {
    const kit::TemporaryDirectory directory;
    directory.Write("file", "");
    EXPECT_TRUE(IsSameFile(IdentityOf(directory.Path() / "file"), IdentityOf(directory.Path() / "FILE")));
    EXPECT_TRUE(IsSameFile(IdentityOf(directory.Path() / "new"), IdentityOf(directory.Path() / "NEW")));
}

TEST(IdentityWin32, DevicesAreNoFiles) {
    EXPECT_EQ(IdentityOf("NUL").kind, FileIdentity::Kind::device);
    EXPECT_EQ(IdentityOf("nul").kind, FileIdentity::Kind::device);
    EXPECT_EQ(IdentityOf("COM1").kind, FileIdentity::Kind::device);
    EXPECT_EQ(IdentityOf("//./pipe/mordhostTest-none").kind, FileIdentity::Kind::device);
}

TEST(IdentityWin32, AStandardStreamIsTheFileToWhichItLeads) {
    const kit::TemporaryDirectory directory;
    const std::filesystem::path path = PathOf(directory.Write("file", ""));
    const HANDLE file = CreateFileW(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                    OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    const HANDLE former = GetStdHandle(STD_OUTPUT_HANDLE);
    SetStdHandle(STD_OUTPUT_HANDLE, file);
    const std::optional<FileIdentity> redirected = Identify(Stream::output);
    SetStdHandle(STD_OUTPUT_HANDLE, nullptr);
    const std::optional<FileIdentity> closed = Identify(Stream::output);
    SetStdHandle(STD_OUTPUT_HANDLE, former);
    CloseHandle(file);
    ASSERT_TRUE(redirected);
    EXPECT_TRUE(IsSameFile(*redirected, IdentityOf(path)));
    EXPECT_FALSE(closed);
}
