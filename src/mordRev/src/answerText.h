// A RapidJSON stream for the in-situ parse of a text that must not change: it copies the strings.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <string_view>

#include "mordRev/src/blockMemory.h"
#include "mordRev/src/plainText.h"

// A NUL must follow the text. The parser writes the value of each string, and a NUL behind it, into `memory`, whose
// open piece must be empty. Reads and writes nothing out of bounds even if the host changes the text meanwhile.
//
// Most strings have no escape sequence: PutBegin copies them as a whole, and the parser continues at their end.
class AnswerText {
public:
    using Ch = char;

    AnswerText(std::string_view text, BlockMemory& memory)
        : m_memory(memory), m_begin(text.data()), m_at(text.data()), m_end(text.data() + text.size()) {}

    Ch Peek() const { return *m_at; }
    Ch Take() { return *m_at++; }
    size_t Tell() const { return static_cast<size_t>(m_at - m_begin); }

    Ch* PutBegin() {
        size_t room = m_memory.RoomLeft();
        char* begin = m_memory.Room(0);
        const char* plainEnd = CopyPlainText(m_at, m_at + std::min(room, static_cast<size_t>(m_end - m_at)), begin);
        if (static_cast<size_t>(plainEnd - m_at) == room || *plainEnd != '"') {
            room = LengthOfString(plainEnd) + 1;
            begin = m_memory.Room(room);
            std::memcpy(begin, m_at, static_cast<size_t>(plainEnd - m_at));
        }
        m_put = begin + (plainEnd - m_at);
        m_putLimit = begin + room;
        m_at = plainEnd;
        return begin;
    }
    void Put(Ch character) {
        // There is always room unless the host changes the text meanwhile.
        if (m_put != m_putLimit) {
            *m_put++ = character;
        }
    }
    size_t PutEnd(const Ch* begin) {
        m_put[-1] = '\0'; // Put wrote it, unless there was no room
        const auto size = static_cast<size_t>(m_put - begin);
        m_memory.Add(size);
        m_memory.Close();
        return size;
    }
    void Flush() {}

private:
    // Returns the number of characters from m_at to the end of the string, which is not before `at`. No value is
    // longer.
    size_t LengthOfString(const char* at) const {
        at = SkipPlainText(at, m_end);
        while (at != m_end && *at == '\\') {
            at += m_end - at >= 2 ? 2 : 1;
            at = SkipPlainText(at, m_end);
        }
        return static_cast<size_t>(at - m_at);
    }

    BlockMemory& m_memory;
    const char* m_begin;
    const char* m_at;
    const char* m_end;
    char* m_put = nullptr;
    char* m_putLimit = nullptr;
};
