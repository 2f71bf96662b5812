// The events of a run, from a file or from the standard input.
#pragma once

#include <deque>
#include <string>

#include "policy/eventReader.h"
#include "system/inputStream.h"

namespace mordhost {

class EventSource {
public:
    // The name of the standard input.
    static constexpr auto standardInput = "-";

    // Throws FileError and Stopped.
    explicit EventSource(const std::string& name);

    // Whether events arrive one by one and must be handled without delay: from the standard input, a pipe or a
    // terminal.
    bool IsLive() const { return m_isLive; }

    // Reads at most the first thousand events of a file and keeps them for Next. Reads none if IsLive. Throws
    // DocumentError, FileError and Stopped.
    const std::deque<ConnectionEvent>& LookAhead();

    // Reads the next event into `event` and keeps the memory of its texts. Returns false at the end. Throws
    // DocumentError, FileError and Stopped.
    bool Next(ConnectionEvent& event);

    // The size of the file and the number of bytes read so far.
    uint64_t Size() const { return m_input.Size(); }
    uint64_t Done() const { return m_input.Done(); }

private:
    InputStream m_input;
    const bool m_isLive;
    EventReader m_reader;
    std::deque<ConnectionEvent> m_ahead;
};

} // namespace mordhost
