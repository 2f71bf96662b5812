// The replacing of a file as a whole.
#pragma once

#include <string>

namespace mordhost {

// Throws FileError when the file `name` cannot be replaced because something else than a file is there, or nothing can
// be: a device, a pipe, a socket, a directory, or a directory that is missing above it.
void RequireReplaceable(const std::string& name);

// Replaces the file by `text`, so that at every moment, a crash included, either the old file or the new one is whole
// under the name: the text goes into a new file beside it, to the disk, and then takes the name over. Follows links,
// and keeps the owner and the rights of the file. Throws FileError and leaves the old file.
void ReplaceWholeFile(const std::string& name, const std::string& text);

} // namespace mordhost
