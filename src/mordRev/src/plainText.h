// The characters of a JSON string that stand for themselves.
#pragma once

#include <bit>
#include <cstddef>
#include <cstring>

// The first character from `at` on that may end a JSON string or must be escaped in it (a quotation mark, a backslash, a
// control character), or `end`. Looks at a machine word at a time.
inline const char* PassPlainText(const char* at, const char* end) {
    using Word = size_t;
    static_assert(std::endian::native == std::endian::little, "the first character is the lowest byte of a word");
    constexpr auto repeat = [](Word byte) { return ~Word{0} / 0xFF * byte; };
    // Sets the highest bit of the lowest byte that is less than `limit`; what stands in higher bytes says nothing.
    constexpr auto bytesBelow = [repeat](Word word, Word limits) { return (word - limits) & ~word & repeat(0x80); };
    for (; static_cast<size_t>(end - at) >= sizeof(Word); at += sizeof(Word)) {
        Word word = 0;
        std::memcpy(&word, at, sizeof word);
        const Word special = bytesBelow(word, repeat(0x20)) | bytesBelow(word ^ repeat('"'), repeat(1)) |
                             bytesBelow(word ^ repeat('\\'), repeat(1));
        if (special != 0) {
            return at + std::countr_zero(special) / 8;
        }
    }
    while (at != end && static_cast<unsigned char>(*at) >= 0x20 && *at != '"' && *at != '\\') {
        ++at;
    }
    return at;
}
