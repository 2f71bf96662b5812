#include "policy/eventReader.h"

#include <utility>

#include "policy/plainEvent.h"

namespace mordhost {

EventReader::EventReader(std::istream& stream, std::string name) : m_stream(stream), m_name(std::move(name)) {}

bool EventReader::Next(ConnectionEvent& event) {
    while (std::getline(m_stream, m_line)) {
        ++m_number;
        if (m_line.find_first_not_of(" \t\r") == std::string::npos) {
            continue;
        }
        m_copy = m_line;
        if (ReadPlainEvent(m_copy, event)) {
            event.line = m_number;
        } else {
            event = ReadEvent(SourceText(m_name, m_line, m_number));
        }
        return true;
    }
    return false;
}

} // namespace mordhost
