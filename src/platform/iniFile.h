// Ini files by the rules of the Windows profile functions, for systems that have none.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace platform {

// The text of `key` in `section` within the ini text `ini`, without the blanks around it and without one pair of
// quotes around it; empty when there is none. Names are compared without regard to the case of ASCII letters, the first
// section and the first key of a name count, with or without a "=", and lines that begin with a semicolon are comments.
// A line ends at a carriage return or a line feed.
std::string FindIniValue(std::string_view ini, std::string_view section, std::string_view key);

// The number at the start of `text`, behind blanks and control characters: an optional sign, then decimal digits, or
// hexadecimal, octal or binary ones behind "0x", "0o" or "0b"; taken modulo 2^32; 0 where none stand.
uint32_t ParseIniInteger(std::string_view text);

// The whole file at `path` as UTF-8, also when it is UTF-16 with a byte order mark; empty when it cannot be read.
std::string ReadIniFile(const std::string& path);

} // namespace platform
