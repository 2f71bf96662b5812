// Text that is parsed where it stands: a stream of RapidJSON's kind, for its in-situ parse.
#pragma once

#include <bit>
#include <cstddef>
#include <cstring>

// Over `length` bytes and the NUL behind them. The parser turns each string into its value in the place where it stands,
// so that no string is copied.
//
// The parser looks at a string character by character. This stream makes that a matter of the characters that need it:
// at the beginning of a string it passes over all that stand for themselves, a machine word at a time. What it passes
// over is where it belongs already.
class InPlaceText {
public:
    using Ch = char;

    InPlaceText(char* text, size_t length) : m_begin(text), m_at(text), m_end(text + length) {}

    Ch Peek() const { return *m_at; }
    Ch Take() { return *m_at++; }
    size_t Tell() const { return static_cast<size_t>(m_at - m_begin); }

    Ch* PutBegin() {
        Ch* const begin = m_at;
        m_at = PassPlainCharacters(m_at, m_end);
        m_put = m_at;
        return begin;
    }
    void Put(Ch character) { *m_put++ = character; }
    size_t PutEnd(const Ch* begin) const { return static_cast<size_t>(m_put - begin); }
    void Flush() {}

private:
    using Word = size_t;

    // The word that has `byte` in each of its bytes.
    static constexpr Word Repeat(unsigned char byte) { return ~Word{0} / 0xFF * byte; }

    // Sets the highest bit of the lowest byte that is less than `limit`, which is at most 0x80; what stands in higher
    // bytes says nothing.
    static constexpr Word BytesBelow(Word word, unsigned char limit) {
        return (word - Repeat(limit)) & ~word & Repeat(0x80);
    }

    // The first character that may end a string or may not stand in it, or the end: a quotation mark, a backslash, a
    // control character. The parser tells what it means.
    static Ch* PassPlainCharacters(Ch* at, const Ch* end) {
        static_assert(std::endian::native == std::endian::little, "the first character is the lowest byte of a word");
        for (; static_cast<size_t>(end - at) >= sizeof(Word); at += sizeof(Word)) {
            Word word = 0;
            std::memcpy(&word, at, sizeof word);
            const Word special =
                BytesBelow(word, 0x20) | BytesBelow(word ^ Repeat('"'), 1) | BytesBelow(word ^ Repeat('\\'), 1);
            if (special != 0) {
                return at + std::countr_zero(special) / 8;
            }
        }
        return at; // the last few are left to the parser
    }

    Ch* m_begin;
    Ch* m_at;
    Ch* m_end;
    Ch* m_put = nullptr;
};
