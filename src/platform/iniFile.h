// Ini files with the syntax of the Windows profile functions, for systems that lack them.
//
// All functions may run on any thread and throw only std::bad_alloc.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace platform {

// Returns the value of `key` in `section` of the ini text `ini`, without surrounding blanks and without one pair of
// surrounding quotes. Returns an empty text if the key is missing or has no value.
//
// Names ignore the case of ASCII letters. The first section and the first key of a name count, even if that key has no
// "=". A line that begins with a semicolon is a comment. A line ends at a carriage return or a line feed.
std::string FindIniValue(std::string_view ini, std::string_view section, std::string_view key);

// Returns the number at the start of `text`, after blanks and control characters, modulo 2^32: an optional sign, then
// decimal digits, or hexadecimal, octal or binary digits after "0x", "0o" or "0b". Returns 0 if there are no digits.
uint32_t ParseIniInteger(std::string_view text);

// Returns the content of the file at `path` as UTF-8 without a byte order mark. A file that begins with the mark of
// UTF-16LE is converted. Returns an empty text if the file cannot be read.
std::string ReadIniFile(const std::string& path);

} // namespace platform
