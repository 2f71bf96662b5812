#include "policy/place.h"

#include <algorithm>

namespace mordhost {

namespace {

// Whether a byte of UTF-8 starts a character.
bool StartsCharacter(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U;
}

// Locations of ascending offsets.
class Scanner {
public:
    explicit Scanner(const SourceText& source)
        : m_text(source.Text()), m_offset(m_text.starts_with(byteOrderMark) ? byteOrderMark.size() : 0),
          m_location(source.At(0)) {}

    const Location& MoveTo(size_t offset) {
        for (const size_t end = std::min(offset, m_text.size()); m_offset < end; ++m_offset) {
            if (m_text[m_offset] == '\n') {
                ++m_location.line;
                m_location.column = 1;
            } else if (StartsCharacter(m_text[m_offset])) {
                ++m_location.column;
            }
        }
        return m_location;
    }

private:
    const std::string_view m_text;
    size_t m_offset;
    Location m_location; // of m_offset
};

} // namespace

std::vector<Place> PlacesOf(const SourceText& source, const std::vector<JsonNode>& elements, std::string_view pointer) {
    std::vector<Place> places;
    places.reserve(elements.size());
    Scanner scanner(source);
    for (const JsonNode& element : elements) {
        const std::string index = std::to_string(places.size());
        places.push_back({scanner.MoveTo(element.begin), std::string(pointer) + '/' + index});
    }
    return places;
}

} // namespace mordhost
