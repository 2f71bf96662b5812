// The plain characters of a JSON string: those that need no escape.
#pragma once

#include <bit>
#include <climits>
#include <cstddef>
#include <cstring>

// Returns whether `character` may appear unescaped within a JSON string: no control character, quote or backslash.
inline bool IsPlainText(char character) {
    return static_cast<unsigned char>(character) >= 0x20 && character != '"' && character != '\\';
}

// Returns the first character from `at` on that is not plain, or `end`. Scans a machine word at a time and reads
// nothing outside the range.
inline const char* PassPlainText(const char* at, const char* end) {
    using Word = size_t;
    static_assert(std::endian::native == std::endian::little, "the first character is the lowest byte of a word");
    constexpr Word each = ~Word{0} / 0xFF; // 1 in each byte
    while (static_cast<size_t>(end - at) >= sizeof(Word)) {
        Word word = 0;
        std::memcpy(&word, at, sizeof word);
        // Each sum sets the highest bit of a byte unless the byte is the character in question. A sum of the lower
        // seven bits never carries into the next byte. Bytes beyond ASCII are always plain.
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
