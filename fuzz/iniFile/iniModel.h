// The rules of ini files once more, in the plainest way and without anything of the reader's own.
#pragma once

#include <cstdint>
#include <string>

// The text of an ini file of these bytes: UTF-8, with its byte order mark or without one, or UTF-16 with the mark of
// the lesser end first; half a unit at the end does not count, and a half surrogate pair becomes U+FFFD.
std::string ModelIniText(const std::string& bytes);

// The value of `key` in `section`, or the empty text. Names are compared without regard to the case of ASCII letters.
std::string ModelIniValue(const std::string& text, const std::string& section, const std::string& key);

// The number at the start of a value.
uint32_t ModelIniInteger(const std::string& value);
