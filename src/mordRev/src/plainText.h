// The characters of a JSON string that stand for themselves.
#pragma once

#include <bit>
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
        // A difference below zero sets the highest bit of its byte. So does a character beyond ASCII, and the borrow of
        // a lower byte: the lowest byte that has the bit is the first that needs a look.
        const Word suspects =
            (((word ^ each * '"') - each) | ((word ^ each * '\\') - each) | (word - each * 0x20) | word) & each * 0x80;
        if (suspects == 0) {
            at += sizeof word;
            continue;
        }
        at += std::countr_zero(suspects) / 8;
        if (!IsPlainText(*at)) {
            return at;
        }
        ++at;
    }
    while (at != end && IsPlainText(*at)) {
        ++at;
    }
    return at;
}
