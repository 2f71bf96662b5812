// Text that is parsed where it stands: a stream of RapidJSON's kind, for its in-situ parse.
#pragma once

#include <cstddef>

#include "mordRev/src/plainText.h"

// Over `length` bytes and the NUL behind them. The parser turns each string into its value in the place where it
// stands, so that no string is copied.
//
// The parser looks at a string character by character. This stream makes that a matter of the characters that need it:
// at the beginning of a string it passes over all that stand for themselves, which are where they belong already. What
// is left is so little that RapidJSON's way of working on a copy of the stream would take longer than it saves.
class InPlaceText {
public:
    using Ch = char;

    InPlaceText(char* text, size_t length) : m_begin(text), m_at(text), m_end(text + length) {}

    Ch Peek() const { return *m_at; }
    Ch Take() { return *m_at++; }
    size_t Tell() const { return static_cast<size_t>(m_at - m_begin); }

    Ch* PutBegin() {
        Ch* const begin = m_at;
        m_at += PassPlainText(m_at, m_end) - m_at;
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
