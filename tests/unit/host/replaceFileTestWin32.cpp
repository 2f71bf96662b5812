// The access list of a file, and devices. Windows only.
#include <vector>

#include <gtest/gtest.h>
#include <windows.h>

#include "unit/host/replacementOf.h"
#include "unit/host/temporaryDirectory.h"

using namespace mordhost;
using kit::TemporaryDirectory;
using mordhostTest::ReplacementOf;

namespace {

// The access list of a file as bytes.
std::vector<unsigned char> RightsOf(const std::string& name) {
    DWORD size = 0;
    GetFileSecurityW(PathOf(name).c_str(), DACL_SECURITY_INFORMATION, nullptr, 0, &size);
    std::vector<unsigned char> bytes(size);
    EXPECT_TRUE(GetFileSecurityW(PathOf(name).c_str(), DACL_SECURITY_INFORMATION, bytes.data(), size, &size));
    return bytes;
}

// Gives only the owner the rights to read and write.
void KeepFromOthers(const std::string& name) {
    SECURITY_DESCRIPTOR descriptor{};
    ASSERT_TRUE(InitializeSecurityDescriptor(&descriptor, SECURITY_DESCRIPTOR_REVISION));
    HANDLE token = nullptr;
    ASSERT_TRUE(OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, &token));
    DWORD size = 0;
    GetTokenInformation(token, TokenUser, nullptr, 0, &size);
    std::vector<unsigned char> memory(size);
    ASSERT_TRUE(GetTokenInformation(token, TokenUser, memory.data(), size, &size));
    CloseHandle(token);
    unsigned char list[256] = {};
    auto* const acl = reinterpret_cast<ACL*>(list);
    ASSERT_TRUE(InitializeAcl(acl, sizeof list, ACL_REVISION));
    ASSERT_TRUE(AddAccessAllowedAce(acl, ACL_REVISION, FILE_ALL_ACCESS,
                                    reinterpret_cast<TOKEN_USER*>(memory.data())->User.Sid));
    ASSERT_TRUE(SetSecurityDescriptorDacl(&descriptor, TRUE, acl, FALSE));
    ASSERT_TRUE(SetFileSecurityW(PathOf(name).c_str(), DACL_SECURITY_INFORMATION, &descriptor));
}

} // namespace

TEST(ReplaceFileWin32, TheFileKeepsItsRights) {
    const TemporaryDirectory directory;
    const std::string name = directory.Write("dots.json", "old");
    const std::vector<unsigned char> usual = RightsOf(name);
    KeepFromOthers(name);
    const std::vector<unsigned char> rights = RightsOf(name);
    ASSERT_NE(rights, usual);
    ReplaceWholeFile(name, "new");
    EXPECT_EQ(directory.Read("dots.json"), "new");
    EXPECT_EQ(RightsOf(name), rights);
}

TEST(ReplaceFileWin32, ADeviceIsNotReplaced) {
    for (const std::string name : {"NUL", "nul", "//./NUL"}) {
        EXPECT_EQ(ReplacementOf(name), "cannot replace " + name + ": it is a device, not a file");
    }
}
