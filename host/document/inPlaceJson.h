// A JSON text that is parsed where it stands: a stream of RapidJSON's kind, for its in-situ parse.
#pragma once

#include <array>
#include <climits>
#include <string>

namespace mordhost {

// Over a text, which the parse spoils. The parser looks at strings character by character, and most of theirs stand for
// themselves: this stream passes over these at the beginning of a string, so that few are left for the parser. It does
// not look at the encoding of the text.
class InPlaceJson {
public:
    using Ch = char; // RapidJSON wants it under this name

    explicit InPlaceJson(std::string& text) : m_begin(text.data()), m_at(text.data()) {}

    Ch Peek() const { return *m_at; }
    Ch Take() { return *m_at++; }
    size_t Tell() const { return static_cast<size_t>(m_at - m_begin); }

    // Begins a string. Its value takes the place of its JSON.
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
    // Which characters neither end a string nor need a look; the NUL behind the text does.
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
