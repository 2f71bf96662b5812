// A log file that is open for appending.
#pragma once

#include <memory>

#include "zelkBase/appendStream.h"
#include "zelkBase/unicode.h"

namespace siblings {

// Opens the file at `path`, creating it if necessary, and returns a stream that owns it, or null if the system refuses.
// Throws std::bad_alloc.
//
// The system places each write at the current end of the file, so that several processes can write the same file
// without mixing their records. Others can read, rename and delete the open file. Child processes do not inherit it. A
// write to a pipe at `path` never blocks.
std::unique_ptr<AppendStream> OpenLogFile(const WideString& path);

} // namespace siblings
