// A log file, open for appending.
#pragma once

#include <memory>

#include "zelkBase/appendStream.h"
#include "zelkBase/unicode.h"

namespace siblings {

// Opens the file at `path`, made if it is not there, and returns a stream that owns it; null if the system refuses. The
// system puts each write at the end that the file has at that moment, so that processes which write the same file leave
// each other's records whole. Others may read, rename and delete the file meanwhile; child processes do not inherit it.
std::unique_ptr<AppendStream> OpenLogFile(const WideString& path);

} // namespace siblings
