// Code points in UTF-8 and UTF-16 texts.
//
// What is ill-formed reads as U+FFFD, by the practice that the Unicode Standard recommends: one for each maximal
// subpart of an ill-formed sequence, that is, for the longest start of a well-formed sequence that stands there, or for
// a single byte where none does. So an overlong form, a surrogate or a value beyond U+10FFFF gives one for each of its
// bytes, a truncated sequence gives one, and a surrogate that stands alone in UTF-16 gives one.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "platform/wideChar.h"

namespace siblings {

using WideString = std::basic_string<WideChar>;
using WideView = std::basic_string_view<WideChar>;

// The most characters that one code point takes.
template <typename Char>
constexpr size_t longestCodePoint = 0;
template <>
inline constexpr size_t longestCodePoint<char> = 4;
template <>
inline constexpr size_t longestCodePoint<WideChar> = 2;

// Takes the code point at the start of `text`, which must not be empty, off it. Always a scalar value.
char32_t TakeCodePoint(std::string_view& text);
char32_t TakeCodePoint(WideView& text);

// Writes the scalar value `point` and returns the number of characters it took.
size_t PutCodePoint(char32_t point, char (&out)[longestCodePoint<char>]);
size_t PutCodePoint(char32_t point, WideChar (&out)[longestCodePoint<WideChar>]);

std::string ToUtf8(WideView text);
WideString ToWide(std::string_view text);

} // namespace siblings
