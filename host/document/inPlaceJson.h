// A RapidJSON stream for in-situ parsing.
#pragma once

#include <array>
#include <climits>
#include <string>

namespace mordhost {

// Reads a text, which the parse overwrites. At the start of a string the stream itself skips the characters that need
// no decoding, because the parser is slow for each character. Does not validate the encoding.
class InPlaceJson {
public:
    using Ch = char; // RapidJSON requires this name

    explicit InPlaceJson(std::string& text) : m_begin(text.data()), m_at(text.data()) {}

    Ch Peek() const { return *m_at; }
    Ch Take() { return *m_at++; }
    size_t Tell() const { return static_cast<size_t>(m_at - m_begin); }

    // Begins a string, whose value overwrites its JSON.
    Ch* PutBegin() {
        Ch* const begin = m_at;
        while (plain[static_cast<unsigned char>(*m_at)]) {
            ++m_at;
        }
        m_put = m_at;
        return begin;
    }
    void Put(Ch character) { *m_put++ = character; }
    size_t PutEnd(const Ch* begin) const { return static_cast<size_t>(m_put - begin); }
    void Flush() {}

private:
    // The characters that neither end a string nor need decoding. NUL, which ends the text, is not among them.
    static constexpr auto plain = [] {
        std::array<bool, UCHAR_MAX + 1> table{};
        for (size_t c = 0x20; c < table.size(); ++c) {
            table[c] = c != '"' && c != '\\';
        }
        return table;
    }();

    Ch* m_begin;
    Ch* m_at;
    Ch* m_put = nullptr;
};

} // namespace mordhost
