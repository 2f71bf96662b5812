// The events of a replay, in their order.
#pragma once

#include <deque>
#include <memory>
#include <string>

#include "document/inputStream.h"
#include "events/eventReader.h"

namespace mordhost {

class EventSource {
public:
    // The name of the standard input among those of files.
    static constexpr auto standardInput = "-";

    // Throws FileError, and Stopped.
    explicit EventSource(const std::string& name);

    // Whether events come one by one and are not to be waited for: from the standard input, a pipe or a terminal.
    bool IsLive() const { return m_isLive; }

    // Reads the first events of a file that is not live ahead of the rest, so that they can be looked at before they
    // come: a thousand at most. Throws DocumentError, FileError and Stopped.
    const std::deque<ConnectionEvent>& LookAhead();

    // Reads the next event into `event`, whose texts keep their memory. Returns false at the end. Throws DocumentError,
    // FileError and Stopped.
    bool Next(ConnectionEvent& event);

    // Bytes: of the file, and how many of them have been read.
    uint64_t Size() const { return m_input->Size(); }
    uint64_t Done() const { return m_input->Done(); }

private:
    const std::unique_ptr<InputStream> m_input;
    const bool m_isLive;
    EventReader m_reader;
    std::deque<ConnectionEvent> m_ahead;
};

} // namespace mordhost
