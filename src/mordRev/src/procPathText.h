// The forms of a process path that a report contains. Pure functions; any thread may call.
#pragma once

#include <string>

// Converts 'A' to 'Z' to lower case, byte by byte, whatever the locale. Other bytes stay unchanged.
void LowerCaseAscii(std::string& text);

// Returns the part of `path` behind its last "/" or "\", whichever comes last; the whole path if it has neither.
std::string ExtractProcName(const std::string& path);
