// The replacing of a file as a whole; each platform has one body of this.
#pragma once

#include <string_view>
#include <system_error>

#include "system/fileIdentity.h"

namespace mordhost {

// Puts a file with `text` where `file` is, a regular or an absent one, so that at every moment, a crash included,
// either the old file or the new one is there whole. The new one has the owner and the rights of the old one; it is
// written beside it, under a name that begins with the old one's, and takes its name when the disk has it. On an error
// the old file is left, and nothing beside it.
std::error_code ReplaceWhole(const FileIdentity& file, std::string_view text);

} // namespace mordhost
