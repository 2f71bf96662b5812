#include "document/sourceText.h"

#include <algorithm>
#include <utility>

namespace mordhost {

namespace {

bool StartsCharacter(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U;
}

} // namespace

std::string Location::Text() const {
    return file + ":" + std::to_string(line) + ":" + std::to_string(column);
}

DocumentError::DocumentError(const Location& where, const std::string& reason)
    : std::runtime_error(where.Text() + ": " + reason) {}

SourceText::SourceText(std::string name, std::string text, size_t firstLine)
    : m_name(std::move(name)), m_text(std::move(text)), m_firstLine(firstLine) {}

Location SourceText::At(size_t offset) const {
    std::string_view before = Text().substr(0, std::min(offset, m_text.size()));
    // Editors do not show the mark as a character.
    if (before.starts_with(byteOrderMark)) {
        before.remove_prefix(byteOrderMark.size());
    }
    const size_t lineStart = before.rfind('\n') + 1; // 0 in the first line
    const auto lines = static_cast<size_t>(std::count(before.begin(), before.end(), '\n'));
    const std::string_view line = before.substr(lineStart);
    const auto characters = static_cast<size_t>(std::count_if(line.begin(), line.end(), StartsCharacter));
    return {m_name, m_firstLine + lines, characters + 1};
}

void SourceText::Refuse(size_t offset, const std::string& reason) const {
    throw DocumentError(At(offset), reason);
}

} // namespace mordhost
