// Which file a name leads to, however it is written; each platform has one body of this.
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
    // Of the file; where there is none, of the directory in which it would be made.
    uint64_t volume = 0;
    uint64_t index = 0;
    // The place of the file, or of the one that would be made, behind all links.
    std::filesystem::path place;
};

// Where `path` leads. An error: it leads nowhere, as through a directory that is not there.
std::error_code Identify(const std::filesystem::path& path, FileIdentity& identity);

// Whether both are one file, or would be.
bool IsSameFile(const FileIdentity& one, const FileIdentity& other);

// What the stream of this process leads to; nothing for one that is closed.
std::optional<FileIdentity> Identify(Stream stream);

// "a directory", "a device", … as messages name a kind.
const char* KindName(FileIdentity::Kind kind);

} // namespace mordhost
