// Reading of event files: JSON Lines, one event a line. Lines of nothing but white space are passed over.
#pragma once

#include <istream>
#include <string>

#include "events/connectionEvent.h"

namespace mordhost {

class EventReader {
public:
    // `stream` is not owned; `name` is what messages call it.
    EventReader(std::istream& stream, std::string name);

    // Reads the next event into `event`, whose texts keep their memory. Returns false at the end. Throws DocumentError
    // for a line that is no event.
    bool Next(ConnectionEvent& event);

private:
    std::istream& m_stream;
    std::string m_name;
    std::string m_line;
    std::string m_spoilt; // a copy of the line, in which it is read
    size_t m_number = 0;  // of the line
};

} // namespace mordhost
