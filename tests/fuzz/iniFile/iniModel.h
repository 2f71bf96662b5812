// A second implementation of the rules of ini files, as plain as possible. It shares no code with the reader.
#pragma once

#include <cstdint>
#include <string>

// The text of an ini file of these bytes: UTF-8 with or without a byte order mark, or UTF-16LE with one. An odd byte at
// the end of UTF-16 is ignored, and a lone surrogate becomes U+FFFD.
std::string ModelIniText(const std::string& bytes);

// The value of `key` in `section`, or the empty text. Names are compared without regard to the case of ASCII letters.
std::string ModelIniValue(const std::string& text, const std::string& section, const std::string& key);

// The number at the start of a value.
uint32_t ModelIniInteger(const std::string& value);
