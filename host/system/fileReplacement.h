// Atomic replacement of a file. One body per platform.
#pragma once

#include <string_view>
#include <system_error>

#include "system/fileIdentity.h"

namespace mordhost {

// Replaces `file`, which must be regular or absent, by a file that contains `text`. At every moment, also after a
// crash, the complete old file or the complete new file exists. The function writes a temporary file in the same
// directory, whose name begins with the name of `file`, copies owner and permissions of the old file to it, flushes it
// to disk and renames it. On an error it leaves the old file unchanged and removes the temporary file.
std::error_code ReplaceWhole(const FileIdentity& file, std::string_view text);

} // namespace mordhost
