// Which file a name refers to, independent of its spelling. One body per platform.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <system_error>

#include "system/hostSystem.h"

namespace mordhost {

struct FileIdentity {
    enum class Kind { regular, directory, device, pipe, socket, absent };

    Kind kind = Kind::absent;
    // Identify the file; for an absent file, the directory that would contain it.
    uint64_t volume = 0;
    uint64_t index = 0;
    // The path of the file, or of the file that would be created, with all links resolved.
    std::filesystem::path place;
};

// Writes to `identity` which file `path` refers to. Returns an error when neither the file nor its directory exists.
std::error_code Identify(const std::filesystem::path& path, FileIdentity& identity);

// Whether both are the same file, or would be the same file once created.
bool IsSameFile(const FileIdentity& one, const FileIdentity& other);

// The file behind a standard stream of this process; nullopt if the stream is closed.
std::optional<FileIdentity> Identify(Stream stream);

// The kind for messages: "a directory", "a device".
const char* KindName(FileIdentity::Kind kind);

} // namespace mordhost
