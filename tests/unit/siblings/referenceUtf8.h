// A second decoder of UTF-8, slow and literal, to hold the converter against: the table of well-formed byte sequences
// of the Unicode Standard, searched row by row.
#pragma once

#include <string>
#include <string_view>

namespace siblingTest {

// The code points of `text`. Where no row of the table matches, the longest start of a row that does match, or else one
// byte, gives one U+FFFD.
std::u32string DecodeUtf8ByTable(std::string_view text);

// The UTF-16 units of `points`.
std::u16string EncodeUtf16(std::u32string_view points);

// The UTF-8 bytes of `points`.
std::string EncodeUtf8(std::u32string_view points);

} // namespace siblingTest
