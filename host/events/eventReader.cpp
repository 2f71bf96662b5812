#include "events/eventReader.h"

#include <utility>

namespace mordhost {

EventReader::EventReader(std::istream& stream, std::string name) : m_stream(stream), m_name(std::move(name)) {}

std::optional<ConnectionEvent> EventReader::Next() {
    std::string text;
    while (std::getline(m_stream, text)) {
        ++m_line;
        if (text.find_first_not_of(" \t\r") != std::string::npos) {
            return ReadEvent(SourceText(m_name, std::move(text), m_line));
        }
    }
    return {};
}

} // namespace mordhost
