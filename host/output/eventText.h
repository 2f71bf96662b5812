// Recorded events in the formats of the standard output.
#pragma once

#include <string>

#include "output/format.h"
#include "policy/connectionEvent.h"

namespace mordhost {

class EventText {
public:
    explicit EventText(OutputFormat format) : m_format(format) {}

    // The text before the first event, the text of an event, and the text after the last event.
    std::string Begin() const;
    std::string Of(const ConnectionEvent& event);
    std::string End() const;

private:
    const OutputFormat m_format;
    bool m_isFirst = true;
};

} // namespace mordhost
