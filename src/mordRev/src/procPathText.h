// Texts that a report makes of the path of a process.
#pragma once

#include <string>

// Turns 'A' to 'Z' into small letters, byte by byte. The bytes of other characters stay, whatever the locale.
void LowerCaseAscii(std::string& text);

// Returns what follows the last "/" or "\" of `path`, whichever comes last; the whole path when it has neither.
std::string ExtractProcName(const std::string& path);
