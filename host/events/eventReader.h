// Reading of event files: JSON Lines, one event a line. Lines of nothing but white space are passed over.
#pragma once

#include <istream>
#include <optional>
#include <string>

#include "events/connectionEvent.h"

namespace mordhost {

class EventReader {
public:
    // `stream` is not owned; `name` is what messages call it.
    EventReader(std::istream& stream, std::string name);

    // The next event, or nothing at the end. Throws DocumentError for a line that is no event.
    std::optional<ConnectionEvent> Next();

private:
    std::istream& m_stream;
    std::string m_name;
    size_t m_line = 0;
};

} // namespace mordhost
