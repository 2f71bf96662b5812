// A stream for RapidJSON's in-situ parse.
#pragma once

#include <cstddef>

#include "mordRev/src/plainText.h"

// Reads `length` bytes and the NUL behind them, which the caller owns. The parser decodes each string in place, so that
// no string is copied, and thereby overwrites the text.
//
// RapidJSON's own stream passes every character of a string through the parser. This one skips the plain characters at
// the start of a string at once: they are already where they belong. The rest is so short that a local copy of the
// stream, which RapidJSON can make, would cost more than it saves.
class InPlaceText {
public:
    using Ch = char;

    InPlaceText(char* text, size_t length) : m_begin(text), m_at(text), m_end(text + length) {}

    Ch Peek() const { return *m_at; }
    Ch Take() { return *m_at++; }
    size_t Tell() const { return static_cast<size_t>(m_at - m_begin); }

    Ch* PutBegin() {
        Ch* const begin = m_at;
        m_at += SkipPlainText(m_at, m_end) - m_at;
        m_put = m_at;
        return begin;
    }
    void Put(Ch character) { *m_put++ = character; }
    size_t PutEnd(const Ch* begin) const { return static_cast<size_t>(m_put - begin); }
    void Flush() {}

private:
    Ch* m_begin;
    Ch* m_at;
    Ch* m_end;
    Ch* m_put = nullptr;
};
