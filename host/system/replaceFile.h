// Replacement of a file by name.
#pragma once

#include <string>

namespace mordhost {

// Throws FileError when the file `name` cannot be replaced: because it is a device, a pipe, a socket or a directory, or
// because its directory does not exist.
void RequireReplaceable(const std::string& name);

// Replaces the file `name` by `text` with the guarantees of ReplaceWhole (fileReplacement.h). Follows links. Throws
// FileError and leaves the old file unchanged.
void ReplaceWholeFile(const std::string& name, const std::string& text);

} // namespace mordhost
