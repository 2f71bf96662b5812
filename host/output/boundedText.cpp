#include "output/boundedText.h"

#include <algorithm>

namespace mordhost {

namespace {

constexpr auto cutSign = "\xE2\x80\xA6"; // "…"

bool ContinuesCharacter(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

// The number of bytes of the control character at the start of `text`; 0 if there is none. Some terminals also
// interpret U+0080 to U+009F, which are two bytes in UTF-8.
size_t ControlLength(std::string_view text) {
    const auto byte = static_cast<unsigned char>(text[0]);
    if (byte < 0x20 || byte == 0x7F) {
        return 1;
    }
    return byte == 0xC2 && text.size() > 1 && static_cast<unsigned char>(text[1]) < 0xA0 ? 2 : 0;
}

// Whether the text is printable ASCII.
bool IsPrintableAscii(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return c >= 0x20 && c < 0x7F; });
}

} // namespace

void BoundedText::Add(std::string_view text) {
    if (!text.empty() && m_width + text.size() <= m_limit && IsPrintableAscii(text)) { // the common case
        m_out += text;
        m_width += text.size();
        m_last = m_out.size() - 1;
        return;
    }
    for (size_t i = 0; i < text.size() && !m_isCut; ++i) {
        if (ContinuesCharacter(text[i])) {
            m_out += text[i];
            continue;
        }
        if (m_width == m_limit) {
            m_out.resize(m_last);
            m_out += cutSign;
            m_isCut = true;
            return;
        }
        m_last = m_out.size();
        ++m_width;
        const size_t control = ControlLength(text.substr(i));
        m_out += control > 0 ? '?' : text[i];
        i += control > 0 ? control - 1 : 0;
    }
}

std::string Printable(std::string_view text, size_t limit) {
    std::string printable;
    BoundedText(printable, limit).Add(text);
    return printable;
}

size_t WidthOf(std::string_view text) {
    return static_cast<size_t>(std::count_if(text.begin(), text.end(), [](char c) { return !ContinuesCharacter(c); }));
}

} // namespace mordhost
