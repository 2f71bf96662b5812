#include "output/table.h"

#include <algorithm>

#include "frame/values.h"
#include "output/boundedText.h"

namespace mordhost {

namespace {

constexpr auto green = "\x1b[32m";
constexpr auto red = "\x1b[31m";
constexpr auto yellow = "\x1b[33m";
constexpr auto dim = "\x1b[2m";
constexpr auto bold = "\x1b[1m";
constexpr auto plain = "\x1b[0m";

constexpr size_t betweenColumns = 2;

constexpr Texts headings = {"TIME", "REMOTE END", "LOCAL END", "PROCESS", "RULES", "VERDICT", "WHY"};

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
    Widen(widths, {"09:54:12.345", "", "", "", "", "allow (flagged)", "----------------------------------------"});
    return widths;
}

void Widen(Widths& widths, const Texts& texts) {
    for (size_t i = 0; i < columnCount; ++i) {
        widths[i] = std::max(widths[i], WidthOf(texts[i]));
    }
}

void Widen(Widths& widths, const Decision& decision, const Policy& policy) {
    std::string row;
    for (size_t i = 0; i < columnCount; ++i) {
        widths[i] = std::max(widths[i], AppendCell(row, static_cast<Column>(i), decision, policy));
    }
}

void Table::Heading() {
    m_line += m_colour ? bold : "";
    for (size_t i = 0; i < columnCount; ++i) {
        m_line += headings[i];
        Pad(i, headings[i].size());
    }
    WriteLine();
    m_line += m_colour ? plain : "";
    for (size_t i = 0; i < columnCount; ++i) {
        m_line.append(m_widths[i], '-');
        Pad(i, m_widths[i]);
    }
    WriteLine();
}

void Table::Row(const Decision& decision, const Policy& policy) {
    for (size_t i = 0; i < columnCount; ++i) {
        const auto column = static_cast<Column>(i);
        const bool coloured = m_colour && column == Column::verdict;
        m_line += coloured ? ColourOf(decision) : "";
        const size_t width = AppendCell(m_line, column, decision, policy);
        m_line += coloured ? plain : "";
        Pad(i, width);
    }
    WriteLine();
}

void Table::Pad(size_t column, size_t width) {
    if (column + 1 < columnCount) { // no padding after the last column
        m_line.append(std::max(m_widths[column], width) - width + betweenColumns, ' ');
    }
}

void Table::WriteLine() {
    m_line += '\n';
    m_out.write(m_line.data(), static_cast<std::streamsize>(m_line.size()));
    m_line.clear();
}

} // namespace mordhost
