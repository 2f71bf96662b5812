// A reference decoder of UTF-8 for comparison with the converter: searches the Unicode Standard's table of well-formed
// byte sequences row by row.
#pragma once

#include <string>
#include <string_view>

namespace siblingTest {

// The code points of `text`. Where no row matches, the longest matching prefix of a row, at least one byte, becomes one
// U+FFFD.
std::u32string DecodeUtf8ByTable(std::string_view text);

// The UTF-16 units of `points`.
std::u16string EncodeUtf16(std::u32string_view points);

// The UTF-8 bytes of `points`.
std::string EncodeUtf8(std::u32string_view points);

} // namespace siblingTest
