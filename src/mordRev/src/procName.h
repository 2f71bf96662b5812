// The file name in a process path.
#pragma once

#include <string>

// What stands behind the last "/" or "\" of `path`, whichever comes last; the whole path when it has neither.
std::string ExtractProcName(const std::string& path);
