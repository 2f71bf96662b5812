// UTF-16 to UTF-8 for system calls that take narrow text, on systems whose calls do.
#pragma once

#include <string>
#include <string_view>

namespace platform {

// Takes the code point at the start of `text`, which must not be empty, off it. A surrogate that stands alone gives
// U+FFFD.
char32_t TakeCodePoint(std::u16string_view& text);

// Writes the UTF-8 form of `point` to `bytes` and returns its length, 1 to 4.
size_t EncodeUtf8(char32_t point, char (&bytes)[4]);

// `text` as UTF-8.
std::string ToUtf8(std::u16string_view text);

} // namespace platform
