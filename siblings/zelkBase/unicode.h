// Code points in UTF-8 and UTF-16 texts.
//
// What is ill-formed reads as U+FFFD, by the practice that the Unicode Standard recommends: one for each maximal
// subpart of an ill-formed sequence, that is, for the longest start of a well-formed sequence that stands there, or for
// a single byte where none does. So an overlong form, a surrogate or a value beyond U+10FFFF gives one for each of its
// bytes, a truncated sequence gives one, and a surrogate that stands alone in UTF-16 gives one.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>

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

// Copies the ASCII characters at the start of `text` to `out`, which has room for all of `text`, and returns how many
// they are. Each is one character in either encoding. Texts are ASCII for the most part, which is converted faster.
template <typename To, typename From>
size_t CopyAscii(std::basic_string_view<From> text, To* out) {
    constexpr size_t block = 8; // characters that are converted together
    size_t length = 0;
    for (; text.size() - length >= block; length += block) {
        From from[block];
        std::copy_n(text.data() + length, block, from);
        uint32_t all = 0;
        for (const From character : from) {
            all |= static_cast<std::make_unsigned_t<From>>(character);
        }
        if (all >= 0x80) {
            break;
        }
        To to[block];
        for (size_t i = 0; i < block; ++i) {
            to[i] = static_cast<To>(from[i]);
        }
        std::copy_n(to, block, out + length);
    }
    for (; length < text.size() && static_cast<std::make_unsigned_t<From>>(text[length]) < 0x80; ++length) {
        out[length] = static_cast<To>(text[length]);
    }
    return length;
}

// Writes the scalar value `point` and returns the number of characters it took.
size_t PutCodePoint(char32_t point, char (&out)[longestCodePoint<char>]);
size_t PutCodePoint(char32_t point, WideChar (&out)[longestCodePoint<WideChar>]);

// The most bytes that a text of so many UTF-16 units takes.
constexpr size_t Utf8Capacity(size_t units) {
    return 3 * units;
}

// Writes the UTF-8 form of `text` to `out`, which must have room for it, and returns its length.
size_t WriteUtf8(WideView text, char* out);

std::string ToUtf8(WideView text);
WideString ToWide(std::string_view text);

} // namespace siblings
