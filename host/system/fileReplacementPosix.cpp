#include "system/fileReplacement.h"

#include <cerrno>
#include <cstdio>
#include <random>
#include <string>
#include <vector>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include "system/descriptorPosix.h"

namespace mordhost {

namespace {

constexpr auto accessList = "system.posix_acl_access";

// Creates a file whose name is new and begins with `place`, and writes the name to `fresh`.
Descriptor MakeBeside(const std::filesystem::path& place, mode_t mode, std::filesystem::path& fresh) {
    std::random_device random;
    int file = -1;
    do {
        fresh = place;
        fresh += ".mordhost-" + std::to_string(random());
        file = open(fresh.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode);
    } while (file < 0 && errno == EEXIST);
    return Descriptor(file);
}

// With the same mode but without its access list, the file could be open to other users.
std::error_code CopyAccessList(const std::filesystem::path& from, int to) {
    const ssize_t size = getxattr(from.c_str(), accessList, nullptr, 0);
    if (size <= 0) { // no list, or no lists on this file system
        return {};
    }
    std::vector<char> list(static_cast<size_t>(size));
    const ssize_t length = getxattr(from.c_str(), accessList, list.data(), list.size());
    return length == size && fsetxattr(to, accessList, list.data(), list.size(), 0) == 0 ? std::error_code()
                                                                                         : LastError();
}

std::error_code CopyRights(const std::filesystem::path& from, int to) {
    struct stat old {};
    struct stat fresh {};
    if (stat(from.c_str(), &old) != 0 || fstat(to, &fresh) != 0) {
        return LastError();
    }
    const bool sameOwner = old.st_uid == fresh.st_uid && old.st_gid == fresh.st_gid;
    // The owner first, because a change of owner clears special bits of the mode.
    if ((!sameOwner && fchown(to, old.st_uid, old.st_gid) != 0) || fchmod(to, old.st_mode & 07777) != 0) {
        return LastError();
    }
    return CopyAccessList(from, to);
}

std::error_code WriteAndSync(int file, std::string_view text) {
    while (!text.empty()) {
        const ssize_t written = write(file, text.data(), text.size());
        if (written < 0 && errno == EINTR) {
            continue;
        }
        if (written < 0) {
            return LastError();
        }
        text.remove_prefix(static_cast<size_t>(written));
    }
    return fsync(file) == 0 ? std::error_code() : LastError();
}

// Without this the complete old file could be back after a power failure.
void SyncDirectoryOf(const std::filesystem::path& path) {
    const std::filesystem::path directory = path.has_parent_path() ? path.parent_path() : ".";
    const Descriptor handle(open(directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (handle.IsOpen()) {
        fsync(handle.Get());
    }
}

} // namespace

std::error_code ReplaceWhole(const FileIdentity& file, std::string_view text) {
    const bool replaces = file.kind == FileIdentity::Kind::regular;
    std::filesystem::path fresh;
    // Nobody else may open the file before it has the permissions of the old one.
    Descriptor handle = MakeBeside(file.place, replaces ? 0600 : 0666, fresh);
    if (!handle.IsOpen()) {
        return LastError();
    }
    std::error_code error = replaces ? CopyRights(file.place, handle.Get()) : std::error_code();
    if (!error) {
        error = WriteAndSync(handle.Get(), text);
    }
    if (!error) {
        error = handle.Close();
    }
    if (!error && std::rename(fresh.c_str(), file.place.c_str()) != 0) {
        error = LastError();
    }
    if (error) {
        unlink(fresh.c_str());
        return error;
    }
    SyncDirectoryOf(file.place);
    return {};
}

} // namespace mordhost
