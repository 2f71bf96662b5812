// Files of other kinds, and the owner and permissions of a file. Posix only.
#include <array>
#include <cerrno>
#include <cstring>

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <sys/un.h>
#include <sys/xattr.h>
#include <unistd.h>

#include "unit/host/replacementOf.h"
#include "unit/host/temporaryDirectory.h"

using namespace mordhost;
using kit::TemporaryDirectory;
using mordhostTest::ReplacementOf;

namespace {

struct stat StatusOf(const std::string& name) {
    struct stat status {};
    EXPECT_EQ(lstat(name.c_str(), &status), 0) << name;
    return status;
}

class ReplaceFilePosix : public testing::Test {
protected:
    // A device without a driver: every user may create one of this number.
    std::string MakeDevice(const std::string& file) const {
        const std::string name = directory.Name(file);
        EXPECT_EQ(mknod(name.c_str(), S_IFCHR | 0600, makedev(0, 0)), 0) << std::strerror(errno);
        return name;
    }

    void MakeSocket(const std::string& name) const {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        ASSERT_LT(name.size(), sizeof address.sun_path);
        std::strcpy(address.sun_path, name.c_str());
        const int handle = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
        EXPECT_EQ(bind(handle, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
        close(handle);
    }

    void Link(const std::string& target, const std::string& link) const {
        std::filesystem::create_symlink(target, directory.Path() / link);
    }

    const TemporaryDirectory directory;
};

} // namespace

TEST_F(ReplaceFilePosix, ADeviceIsNotReplaced) {
    const std::string name = MakeDevice("device");
    EXPECT_EQ(ReplacementOf(name), "cannot replace " + name + ": it is a device, not a file");
    EXPECT_TRUE(S_ISCHR(StatusOf(name).st_mode));
}

TEST_F(ReplaceFilePosix, APipeIsNotReplaced) {
    const std::string name = directory.Name("pipe");
    ASSERT_EQ(mkfifo(name.c_str(), 0600), 0);
    EXPECT_EQ(ReplacementOf(name), "cannot replace " + name + ": it is a pipe, not a file");
    EXPECT_TRUE(S_ISFIFO(StatusOf(name).st_mode));
}

TEST_F(ReplaceFilePosix, ASocketIsNotReplaced) {
    const std::string name = directory.Name("socket");
    MakeSocket(name);
    EXPECT_EQ(ReplacementOf(name), "cannot replace " + name + ": it is a socket, not a file");
    EXPECT_TRUE(S_ISSOCK(StatusOf(name).st_mode));
}

TEST_F(ReplaceFilePosix, ALinkToADeviceIsNotReplaced) {
    const std::string device = MakeDevice("device");
    Link("device", "link");
    const std::string name = directory.Name("link");
    EXPECT_EQ(ReplacementOf(name), "cannot replace " + name + ": it is a device, not a file");
    EXPECT_TRUE(S_ISLNK(StatusOf(name).st_mode));
    EXPECT_TRUE(S_ISCHR(StatusOf(device).st_mode));
}

TEST_F(ReplaceFilePosix, FollowsLinksToTheFile) {
    std::filesystem::create_directory(directory.Path() / "there");
    directory.Write("there/dots.json", "old");
    Link("there/second", "first");
    Link("dots.json", "there/second");
    EXPECT_EQ(ReplacementOf(directory.Name("first")), "replaced");
    EXPECT_EQ(directory.Read("there/dots.json"), "new");
    EXPECT_TRUE(S_ISLNK(StatusOf(directory.Name("first")).st_mode));
    EXPECT_TRUE(S_ISLNK(StatusOf(directory.Name("there/second")).st_mode));
    EXPECT_TRUE(S_ISREG(StatusOf(directory.Name("there/dots.json")).st_mode));
}

TEST_F(ReplaceFilePosix, CreatesTheTargetOfALink) {
    std::filesystem::create_directory(directory.Path() / "there");
    Link("there/dots.json", "relative");
    Link(directory.Name("there/other.json"), "absolute");
    EXPECT_EQ(ReplacementOf(directory.Name("relative")), "replaced");
    EXPECT_EQ(ReplacementOf(directory.Name("absolute")), "replaced");
    EXPECT_EQ(directory.Read("there/dots.json"), "new");
    EXPECT_EQ(directory.Read("there/other.json"), "new");
    EXPECT_TRUE(S_ISLNK(StatusOf(directory.Name("relative")).st_mode));
}

TEST_F(ReplaceFilePosix, CircularLinksAreAnError) {
    Link("second", "first");
    Link("first", "second");
    const std::string name = directory.Name("first");
    EXPECT_EQ(ReplacementOf(name), "cannot write " + name + ": Too many levels of symbolic links");
}

TEST_F(ReplaceFilePosix, TheFileKeepsItsMode) {
    for (const mode_t mode : {0600U, 0640U, 0666U, 0444U}) {
        const std::string name = directory.Write("dots.json", "old");
        ASSERT_EQ(chmod(name.c_str(), mode), 0);
        EXPECT_EQ(ReplacementOf(name), "replaced");
        EXPECT_EQ(StatusOf(name).st_mode & 07777U, mode);
        std::filesystem::remove(PathOf(name));
    }
}

TEST_F(ReplaceFilePosix, ANewFileHasTheUsualMode) {
    const mode_t former = umask(0027);
    EXPECT_EQ(ReplacementOf(directory.Name("dots.json")), "replaced");
    umask(former);
    EXPECT_EQ(StatusOf(directory.Name("dots.json")).st_mode & 07777U, 0640U);
}

TEST_F(ReplaceFilePosix, TheFileKeepsItsOwner) {
    const std::string name = directory.Write("dots.json", "old");
    // Only with the right to do that.
    const bool mayGive = chown(name.c_str(), 12345, 23456) == 0;
    EXPECT_EQ(mayGive, geteuid() == 0);
    const struct stat old = StatusOf(name);
    EXPECT_EQ(ReplacementOf(name), "replaced");
    EXPECT_EQ(StatusOf(name).st_uid, old.st_uid);
    EXPECT_EQ(StatusOf(name).st_gid, old.st_gid);
    EXPECT_NE(StatusOf(name).st_ino, old.st_ino) << "it was replaced";
}

TEST_F(ReplaceFilePosix, TheFileKeepsItsAccessList) {
    // The owner and one other user may read and write. The group may not, although the mode shows the mask of the list,
    // which includes it.
    constexpr std::array<unsigned char, 44> list = {2,  0, 0, 0,                        // version
                                                    1,  0, 6, 0, 255,  255,  255, 255,  // owner
                                                    2,  0, 6, 0, 0x39, 0x30, 0,   0,    // user 12345
                                                    4,  0, 0, 0, 255,  255,  255, 255,  // group
                                                    16, 0, 6, 0, 255,  255,  255, 255,  // mask
                                                    32, 0, 0, 0, 255,  255,  255, 255}; // others
    constexpr auto attribute = "system.posix_acl_access";
    const std::string name = directory.Write("dots.json", "old");
    ASSERT_EQ(setxattr(name.c_str(), attribute, list.data(), list.size(), 0), 0) << std::strerror(errno);
    EXPECT_EQ(ReplacementOf(name), "replaced");
    std::array<unsigned char, 44> kept{};
    EXPECT_EQ(getxattr(name.c_str(), attribute, kept.data(), kept.size()), static_cast<ssize_t>(kept.size()));
    EXPECT_EQ(kept, list);
    EXPECT_EQ(StatusOf(name).st_mode & 07777U, 0660U);
}
