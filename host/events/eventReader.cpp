#include "events/eventReader.h"

#include <utility>

#include "events/eventLine.h"

namespace mordhost {

EventReader::EventReader(std::istream& stream, std::string name) : m_stream(stream), m_name(std::move(name)) {}

bool EventReader::Next(ConnectionEvent& event) {
    while (std::getline(m_stream, m_line)) {
        ++m_number;
        if (m_line.find_first_not_of(" \t\r") == std::string::npos) {
            continue;
        }
        m_spoilt = m_line;
        if (ReadPlainEvent(m_spoilt, event)) {
            event.line = m_number;
        } else {
            event = ReadEvent(SourceText(m_name, m_line, m_number));
        }
        return true;
    }
    return false;
}

} // namespace mordhost
