// Reads event files: JSON Lines, one event per line. Skips lines of white space.
#pragma once

#include <istream>
#include <string>

#include "policy/connectionEvent.h"

namespace mordhost {

class EventReader {
public:
    // `stream` is not owned. `name` is its name for messages.
    EventReader(std::istream& stream, std::string name);

    // Reads the next event into `event` and keeps the memory of its texts. Returns false at the end. Throws
    // DocumentError for an invalid line.
    bool Next(ConnectionEvent& event);

private:
    std::istream& m_stream;
    std::string m_name;
    std::string m_line;
    std::string m_copy;  // of the line, for ReadPlainEvent to overwrite
    size_t m_number = 0; // of the line
};

} // namespace mordhost
