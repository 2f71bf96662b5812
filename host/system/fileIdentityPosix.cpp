#include "system/fileIdentity.h"

#include <cerrno>

#include <sys/stat.h>
#include <unistd.h>

#include "system/lastErrorPosix.h"
#include "system/streamDescriptorPosix.h"

namespace mordhost {

namespace {

constexpr int mostLinks = 40; // the kernel follows as many

FileIdentity::Kind KindOf(mode_t mode) {
    switch (mode & S_IFMT) {
    case S_IFREG:
        return FileIdentity::Kind::regular;
    case S_IFDIR:
        return FileIdentity::Kind::directory;
    case S_IFIFO:
        return FileIdentity::Kind::pipe;
    case S_IFSOCK:
        return FileIdentity::Kind::socket;
    default:
        return FileIdentity::Kind::device;
    }
}

FileIdentity IdentityOf(const struct stat& status, FileIdentity::Kind kind) {
    return {kind, static_cast<uint64_t>(status.st_dev), static_cast<uint64_t>(status.st_ino), {}};
}

// Replaces `path`, which leads to no file, by the target of its links.
std::error_code FollowToNothing(std::filesystem::path& path) {
    std::error_code error;
    for (int links = 0; std::filesystem::is_symlink(std::filesystem::symlink_status(path, error)); ++links) {
        if (links == mostLinks) {
            return std::make_error_code(std::errc::too_many_symbolic_link_levels);
        }
        const std::filesystem::path target = std::filesystem::read_symlink(path, error);
        if (error) {
            return error;
        }
        path = path.parent_path() / target; // an absolute target replaces the whole path
    }
    return {};
}

} // namespace

std::error_code Identify(const std::filesystem::path& path, FileIdentity& identity) {
    std::error_code error;
    struct stat status {};
    if (stat(path.c_str(), &status) == 0) {
        identity = IdentityOf(status, KindOf(status.st_mode));
        identity.place = std::filesystem::canonical(path, error);
        if (error) { // a name that only the kernel knows, such as that of a pipe below /proc
            identity.place = path;
        }
        return {};
    }
    if (errno != ENOENT) {
        return LastError();
    }
    std::filesystem::path place = path;
    if ((error = FollowToNothing(place))) {
        return error;
    }
    const std::filesystem::path directory = place.has_parent_path() ? place.parent_path() : ".";
    if (!place.has_filename() || stat(directory.c_str(), &status) != 0) {
        return std::make_error_code(std::errc::no_such_file_or_directory);
    }
    identity = IdentityOf(status, FileIdentity::Kind::absent);
    identity.place = place;
    return {};
}

bool IsSameFile(const FileIdentity& one, const FileIdentity& other) {
    const bool absent = one.kind == FileIdentity::Kind::absent;
    return absent == (other.kind == FileIdentity::Kind::absent) && one.volume == other.volume &&
           one.index == other.index && (!absent || one.place.filename() == other.place.filename());
}

std::optional<FileIdentity> Identify(Stream stream) {
    struct stat status {};
    return fstat(DescriptorOf(stream), &status) == 0 ? std::optional(IdentityOf(status, KindOf(status.st_mode)))
                                                     : std::nullopt;
}

} // namespace mordhost
