// A file with a machine id, as Linux systems have it.
#pragma once

#include <string>

namespace siblings {

// Returns the id in the file at `path`: 32 hexadecimal digits, in the case of the file, with or without a line feed.
// Returns an empty text for anything else: no file, the word "uninitialized" of a system that has not finished its
// first boot, or digits that are all 0. Any thread may call.
std::string ReadMachineIdFile(const char* path);

} // namespace siblings
