// Text for a terminal, of a width that has a bound.
#pragma once

#include <cstddef>
#include <limits>
#include <string>
#include <string_view>

namespace mordhost {

// Writes to the end of a string. What is wider than the limit is cut, with "…" for its last character. A character that
// could steer a terminal becomes a question mark. Each character, a code point of UTF-8, counts as one column.
class BoundedText {
public:
    // `out` is not owned. The limit is one column at least.
    BoundedText(std::string& out, size_t limit) : m_out(out), m_limit(limit) {}

    void Add(std::string_view text);

    // The columns that were written so far.
    size_t Width() const { return m_width; }

    // Whether the text was cut: nothing is written any more.
    bool IsCut() const { return m_isCut; }

private:
    std::string& m_out;
    const size_t m_limit;
    size_t m_width = 0;
    size_t m_last = 0; // where the last character begins that fits
    bool m_isCut = false;
};

// The text as above.
std::string Printable(std::string_view text, size_t limit = std::numeric_limits<size_t>::max());

// How many columns of a terminal `text` takes, one for each character.
size_t WidthOf(std::string_view text);

} // namespace mordhost
