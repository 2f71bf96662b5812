// The table of decisions.
#pragma once

#include <array>
#include <ostream>

#include "output/cells.h"

namespace mordhost {

using Widths = std::array<size_t, columnCount>;

// Widths in which the headings fit, and the cells of decisions of which nothing is known yet.
Widths UsualWidths();

// Widens the columns so that `cells` fit.
void Widen(Widths& widths, const Cells& cells);

class Table {
public:
    // `out` is not owned.
    Table(std::ostream& out, const Widths& widths, bool colour) : m_out(out), m_widths(widths), m_colour(colour) {}

    void Heading();

    // A cell that is wider than its column pushes the rest of its row aside. `reply` of the decision gives the colour.
    void Row(const Cells& cells, const Decision& decision);

private:
    // Writes the cells, the verdict in the terminal's `colour`.
    void Line(const Cells& cells, const char* colour);

    std::ostream& m_out;
    const Widths m_widths;
    const bool m_colour;
};

} // namespace mordhost
