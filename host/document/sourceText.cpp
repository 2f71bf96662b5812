#include "document/sourceText.h"

#include <algorithm>
#include <utility>

namespace mordhost {

namespace {

constexpr size_t betweenMarks = 4096;

bool StartsCharacter(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U;
}

} // namespace

std::string Location::Text() const {
    return file + ":" + std::to_string(line) + ":" + std::to_string(column);
}

DocumentError::DocumentError(const Location& where, const std::string& reason)
    : std::runtime_error(where.Text() + ": " + reason), m_fault{"", 0, reason} {}

DocumentError::DocumentError(const Location& where, Fault fault)
    : std::runtime_error(where.Text() + ": " + fault.message), m_fault(std::move(fault)) {}

SourceText::SourceText(std::string name, std::string text, size_t firstLine)
    : m_name(std::move(name)), m_text(std::move(text)), m_firstLine(firstLine) {}

SourceText::Mark SourceText::Moved(Mark from, size_t begin, size_t end) const {
    std::string_view text = Text().substr(begin, end - begin);
    const size_t lastBreak = text.rfind('\n');
    if (lastBreak != std::string_view::npos) {
        from.line += static_cast<size_t>(std::count(text.begin(), text.end(), '\n'));
        from.column = 0;
        text.remove_prefix(lastBreak + 1);
    }
    from.column += static_cast<size_t>(std::count_if(text.begin(), text.end(), StartsCharacter));
    return from;
}

Location SourceText::At(size_t offset) const {
    // Editors do not show the mark as a character.
    const size_t start = Text().starts_with(byteOrderMark) ? byteOrderMark.size() : 0;
    offset = std::clamp(offset, start, std::max(start, m_text.size()));
    const size_t wanted = (offset - start) / betweenMarks;
    if (m_marks.empty()) {
        m_marks.emplace_back();
    }
    while (m_marks.size() <= wanted) {
        const size_t begin = start + (m_marks.size() - 1) * betweenMarks;
        m_marks.push_back(Moved(m_marks.back(), begin, begin + betweenMarks));
    }
    const Mark place = Moved(m_marks[wanted], start + wanted * betweenMarks, offset);
    return {m_name, m_firstLine + place.line, place.column + 1};
}

void SourceText::Refuse(size_t offset, const std::string& reason) const {
    Refuse(Fault{"invalid-value", offset, reason});
}

void SourceText::Refuse(Fault fault) const {
    const Location where = At(fault.begin);
    throw DocumentError(where, std::move(fault));
}

} // namespace mordhost
