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

// What the functions below scan in one step. They read nothing outside their ranges.
using TextWord = size_t;
static_assert(std::endian::native == std::endian::little, "the first character is the lowest byte of a word");

// Returns zero if all characters of a word are plain. Otherwise the lowest bit that is set is in the first one that is
// not.
inline TextWord MarksOf(TextWord word) {
    constexpr TextWord each = ~TextWord{0} / 0xFF; // 1 in each byte
    // A subtraction sets the highest bit of a byte that is too small. Only then it borrows from the bytes behind it.
    // Bytes beyond ASCII are always plain.
    const TextWord quote = (word ^ each * '"') - each;
    const TextWord backslash = (word ^ each * '\\') - each;
    const TextWord control = word - each * 0x20;
    return (quote | backslash | control) & ~word & each * 0x80;
}

inline TextWord TextWordAt(const char* at) {
    TextWord word = 0;
    std::memcpy(&word, at, sizeof word);
    return word;
}

// Returns the first character from `at` on that is not plain, or `end`.
inline const char* SkipPlainText(const char* at, const char* end) {
    while (static_cast<size_t>(end - at) >= sizeof(TextWord)) {
        if (const TextWord marks = MarksOf(TextWordAt(at))) {
            return at + std::countr_zero(marks) / CHAR_BIT;
        }
        at += sizeof(TextWord);
    }
    while (at != end && IsPlainText(*at)) {
        ++at;
    }
    return at;
}

// Like SkipPlainText, and copies the characters before it to `to`, which has room for all up to `end` and may be
// changed that far.
inline const char* CopyPlainText(const char* at, const char* end, char* to) {
    while (static_cast<size_t>(end - at) >= sizeof(TextWord)) {
        const TextWord word = TextWordAt(at);
        std::memcpy(to, &word, sizeof word);
        if (const TextWord marks = MarksOf(word)) {
            return at + std::countr_zero(marks) / CHAR_BIT;
        }
        at += sizeof word;
        to += sizeof word;
    }
    while (at != end && IsPlainText(*at)) {
        *to++ = *at++;
    }
    return at;
}

// Returns the number of characters before the first NUL of `text`, which has one among its first `most` + 1. On Windows
// the system's function scans byte by byte.
inline size_t LengthOfText(const char* text, size_t most) {
    constexpr TextWord each = ~TextWord{0} / 0xFF;
    size_t length = 0;
    while (most - length >= sizeof(TextWord)) {
        const TextWord word = TextWordAt(text + length);
        if (const TextWord nul = (word - each) & ~word & each * 0x80) {
            return length + static_cast<size_t>(std::countr_zero(nul)) / CHAR_BIT;
        }
        length += sizeof word;
    }
    while (text[length] != '\0') {
        ++length;
    }
    return length;
}
