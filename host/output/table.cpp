#include "output/table.h"

#include <algorithm>

#include "frame/values.h"

namespace mordhost {

namespace {

constexpr auto green = "\x1b[32m";
constexpr auto red = "\x1b[31m";
constexpr auto yellow = "\x1b[33m";
constexpr auto dim = "\x1b[2m";
constexpr auto bold = "\x1b[1m";
constexpr auto plain = "\x1b[0m";

const Cells headings = {"TIME", "REMOTE END", "LOCAL END", "PROCESS", "RULES", "VERDICT", "WHY"};

const char* ColourOf(const Decision& decision) {
    if (!decision.asked) {
        return dim;
    }
    switch (decision.reply) {
    case REPLY_BLOCK:
        return red;
    case REPLY_ALLOW_FLAGGED:
        return yellow;
    default:
        return green;
    }
}

} // namespace

Widths UsualWidths() {
    Widths widths{};
    Widen(widths, headings);
    Widen(widths, {"09:54:12.345", "", "", "", "", "allow (flagged)", std::string(40, '-')});
    return widths;
}

void Widen(Widths& widths, const Cells& cells) {
    for (size_t i = 0; i < columnCount; ++i) {
        widths[i] = std::max(widths[i], WidthOf(cells[i]));
    }
}

void Table::Heading() {
    m_out << (m_colour ? bold : "");
    Line(headings, nullptr);
    m_out << (m_colour ? plain : "");
    Cells rule;
    for (size_t i = 0; i < columnCount; ++i) {
        rule[i] = std::string(m_widths[i], '-');
    }
    Line(rule, nullptr);
}

void Table::Row(const Cells& cells, const Decision& decision) {
    Line(cells, m_colour ? ColourOf(decision) : nullptr);
}

void Table::Line(const Cells& cells, const char* colour) {
    for (size_t i = 0; i < columnCount; ++i) {
        const bool coloured = colour != nullptr && i == static_cast<size_t>(Column::verdict);
        m_out << (coloured ? colour : "") << cells[i] << (coloured ? plain : "");
        if (i + 1 < columnCount) { // nothing hangs behind the last column
            const size_t width = WidthOf(cells[i]);
            m_out << std::string(m_widths[i] > width ? m_widths[i] - width + 2 : 2, ' ');
        }
    }
    m_out << '\n';
}

} // namespace mordhost
