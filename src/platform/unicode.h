// UTF-16 to UTF-8, for systems whose calls take narrow text.
//
// All functions are pure and may run on any thread.
#pragma once

#include <string>
#include <string_view>

namespace platform {

// Removes the code point at the start of `text` and returns it. `text` must not be empty. An unpaired surrogate gives
// U+FFFD.
char32_t TakeCodePoint(std::u16string_view& text);

// Writes the UTF-8 form of `point`, a Unicode scalar value, to `bytes` without a NUL. Returns its length, 1 to 4 bytes.
size_t EncodeUtf8(char32_t point, char (&bytes)[4]);

// Returns `text` as UTF-8. Throws std::bad_alloc.
std::string ToUtf8(std::u16string_view text);

} // namespace platform
