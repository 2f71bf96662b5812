// Text for a terminal with a maximum width.
#pragma once

#include <cstddef>
#include <limits>
#include <string>
#include <string_view>

namespace mordhost {

// Appends text to a string. Truncates text that is wider than the limit and ends it in "…". Replaces control characters
// by question marks. Each Unicode code point counts as one column.
class BoundedText {
public:
    // `out` is not owned. `limit` is at least one column.
    BoundedText(std::string& out, size_t limit) : m_out(out), m_limit(limit) {}

    void Add(std::string_view text);

    // The number of columns written so far.
    size_t Width() const { return m_width; }

    // Whether the text was truncated. Nothing is written after that.
    bool IsCut() const { return m_isCut; }

private:
    std::string& m_out;
    const size_t m_limit;
    size_t m_width = 0;
    size_t m_last = 0; // offset of the last character that fits
    bool m_isCut = false;
};

// Returns the text without control characters, truncated as above.
std::string Printable(std::string_view text, size_t limit = std::numeric_limits<size_t>::max());

// The number of columns of `text`, one per code point.
size_t WidthOf(std::string_view text);

} // namespace mordhost
