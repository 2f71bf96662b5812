#include "live/processOwners.h"

#include <charconv>
#include <filesystem>
#include <optional>
#include <string_view>
#include <system_error>

namespace mordhost {

namespace {

namespace fs = std::filesystem;

template <typename Number>
std::optional<Number> NumberOf(std::string_view text) {
    Number number = 0;
    const auto [stop, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    const bool whole = error == std::errc() && stop == text.data() + text.size();
    return whole ? std::optional(number) : std::nullopt;
}

// The inode in "socket:[12345]".
std::optional<uint64_t> SocketInode(const std::string& target) {
    constexpr std::string_view beginning = "socket:[";
    if (!target.starts_with(beginning) || target.back() != ']') {
        return {};
    }
    return NumberOf<uint64_t>(std::string_view(target).substr(beginning.size(), target.size() - beginning.size() - 1));
}

// Skips what disappears meanwhile and what this user may not read.
void LookInto(const fs::path& process, uint32_t pid, const std::set<uint64_t>& inodes,
              std::map<uint64_t, ProcessOwner>& owners) {
    std::error_code error;
    for (fs::directory_iterator entry(process / "fd", error), end; !error && entry != end; entry.increment(error)) {
        std::error_code ignored;
        const auto inode = SocketInode(fs::read_symlink(entry->path(), ignored).native());
        if (!inode || !inodes.contains(*inode)) {
            continue;
        }
        const auto [owner, isNew] = owners.try_emplace(*inode);
        if (isNew || pid < owner->second.pid) {
            owner->second = {pid, fs::read_symlink(process / "exe", ignored).native()};
        }
    }
}

} // namespace

std::map<uint64_t, ProcessOwner> FindOwners(const std::set<uint64_t>& inodes) {
    std::map<uint64_t, ProcessOwner> owners;
    if (inodes.empty()) {
        return owners;
    }
    std::error_code error;
    for (fs::directory_iterator entry("/proc", error), end; !error && entry != end; entry.increment(error)) {
        if (const auto pid = NumberOf<uint32_t>(entry->path().filename().native())) {
            LookInto(entry->path(), *pid, inodes, owners);
        }
    }
    return owners;
}

} // namespace mordhost
