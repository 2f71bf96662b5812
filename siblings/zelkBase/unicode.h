// Code points in UTF-8 and UTF-16 texts. Pure functions; any thread may call. Those that return a string throw
// std::bad_alloc.
//
// Ill-formed text decodes to U+FFFD, as the Unicode Standard recommends: one for each maximal subpart of an ill-formed
// sequence, that is, for the longest prefix of a well-formed sequence, or for a single byte if there is none. So an
// overlong form, a surrogate or a value beyond U+10FFFF gives one for each of its bytes; a truncated sequence gives
// one; an unpaired surrogate in UTF-16 gives one.
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

// The maximum number of characters of one code point.
template <typename Char>
constexpr size_t longestCodePoint = 0;
template <>
inline constexpr size_t longestCodePoint<char> = 4;
template <>
inline constexpr size_t longestCodePoint<WideChar> = 2;

// Removes the code point at the start of `text` and returns it, always a Unicode scalar value. `text` must not be
// empty.
char32_t TakeCodePoint(std::string_view& text);
char32_t TakeCodePoint(WideView& text);

// Copies the ASCII characters at the start of `text` to `out`, which has room for all of `text`. Returns their number.
// They are single characters in both encodings and can be converted in blocks; most texts consist of them.
template <typename To, typename From>
size_t CopyAscii(std::basic_string_view<From> text, To* out) {
    constexpr size_t block = 8; // characters per step
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

// Writes the Unicode scalar value `point`, without a NUL, and returns the number of characters written.
size_t PutCodePoint(char32_t point, char (&out)[longestCodePoint<char>]);
size_t PutCodePoint(char32_t point, WideChar (&out)[longestCodePoint<WideChar>]);

// Returns the maximum length in bytes of `units` UTF-16 units as UTF-8.
constexpr size_t Utf8Capacity(size_t units) {
    return 3 * units;
}

// Writes the UTF-8 form of `text`, without a NUL, to `out`, which has room for Utf8Capacity(text.size()) bytes. Returns
// the number of bytes written.
size_t WriteUtf8(WideView text, char* out);

// Return `text` in the other encoding.
std::string ToUtf8(WideView text);
WideString ToWide(std::string_view text);

} // namespace siblings
