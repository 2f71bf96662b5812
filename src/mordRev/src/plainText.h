// The characters of a JSON string that stand for themselves.
#pragma once

#include <bit>
#include <climits>
#include <cstddef>
#include <cstring>

// Whether a character ends a JSON string, must be escaped in it or may not stand in it.
inline bool IsPlainText(char character) {
    return static_cast<unsigned char>(character) >= 0x20 && character != '"' && character != '\\';
}

// The first character from `at` on that is not plain, or `end`. Looks at a machine word at a time.
inline const char* PassPlainText(const char* at, const char* end) {
    using Word = size_t;
    static_assert(std::endian::native == std::endian::little, "the first character is the lowest byte of a word");
    constexpr Word each = ~Word{0} / 0xFF; // 1 in each byte
    while (static_cast<size_t>(end - at) >= sizeof(Word)) {
        Word word = 0;
        std::memcpy(&word, at, sizeof word);
        // What is added to the lower seven bits of a byte sets its highest one when a character is not the one asked
        // for, and never carries into the next byte. Beyond ASCII all is plain.
        const Word low = word & each * 0x7F;
        const Word noQuote = (low ^ each * '"') + each * 0x7F;
        const Word noBackslash = (low ^ each * '\\') + each * 0x7F;
        const Word noControl = low + each * 0x60;
        const Word plain = ((noQuote & noBackslash & noControl) | word) & each * 0x80;
        if (plain != each * 0x80) {
            return at + std::countr_zero(plain ^ each * 0x80) / CHAR_BIT;
        }
        at += sizeof word;
    }
    while (at != end && IsPlainText(*at)) {
        ++at;
    }
    return at;
}
