#include "system/fileReplacement.h"

#include <cerrno>
#include <cstdio>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include "system/lastErrorPosix.h"

namespace mordhost {

namespace {

constexpr auto accessList = "system.posix_acl_access";

class Descriptor {
public:
    explicit Descriptor(int descriptor) : m_descriptor(descriptor) {}
    ~Descriptor() { Close(); }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    int Get() const { return m_descriptor; }

    // A disk may say no later than now.
    std::error_code Close() {
        const int descriptor = std::exchange(m_descriptor, -1);
        return descriptor < 0 || close(descriptor) == 0 ? std::error_code() : LastError();
    }

private:
    int m_descriptor;
};

// Makes a file of a name that no file had, which begins with `place`.
int MakeBeside(const std::filesystem::path& place, mode_t mode, std::filesystem::path& fresh) {
    std::random_device random;
    int file = -1;
    do {
        fresh = place;
        fresh += ".mordhost-" + std::to_string(random());
        file = open(fresh.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode);
    } while (file < 0 && errno == EEXIST);
    return file;
}

// Access lists are rights too: without its list the same mode would let others in.
std::error_code CopyAccessList(const std::filesystem::path& from, int to) {
    const ssize_t size = getxattr(from.c_str(), accessList, nullptr, 0);
    if (size <= 0) { // it has none, or its file system has none
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
    // The owner first: a change of it takes special bits off the mode.
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

// Without it the old file could be there again after a power cut, still whole.
void SyncDirectoryOf(const std::filesystem::path& path) {
    const std::filesystem::path directory = path.has_parent_path() ? path.parent_path() : ".";
    const Descriptor handle(open(directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (handle.Get() >= 0) {
        fsync(handle.Get());
    }
}

} // namespace

std::error_code ReplaceWhole(const FileIdentity& file, std::string_view text) {
    const bool replaces = file.kind == FileIdentity::Kind::regular;
    std::filesystem::path fresh;
    // Until it has the rights of the old one, nobody else may open it.
    Descriptor handle(MakeBeside(file.place, replaces ? 0600 : 0666, fresh));
    if (handle.Get() < 0) {
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
