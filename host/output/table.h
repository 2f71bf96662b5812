// The table of decisions.
#pragma once

#include <array>
#include <ostream>
#include <string>
#include <string_view>

#include "output/cells.h"

namespace mordhost {

using Widths = std::array<size_t, columnCount>;

// One text per column.
using Texts = std::array<std::string_view, columnCount>;

// Widths for the headings and for cells of the usual widths.
Widths UsualWidths();

// Widen the columns to fit `texts` or the row of the decision.
void Widen(Widths& widths, const Texts& texts);
void Widen(Widths& widths, const Decision& decision, const Policy& policy);

class Table {
public:
    // `out` is not owned.
    Table(std::ostream& out, const Widths& widths, bool colour) : m_out(out), m_widths(widths), m_colour(colour) {}

    void Heading();

    // A cell that is wider than its column moves the rest of its row to the right. The reply determines the colour.
    void Row(const Decision& decision, const Policy& policy);

private:
    // Fills the line up to the next column after a cell of this width.
    void Pad(size_t column, size_t width);
    void WriteLine();

    std::ostream& m_out;
    const Widths m_widths;
    const bool m_colour;
    std::string m_line; // the current line; a member, to reuse its memory
};

} // namespace mordhost
