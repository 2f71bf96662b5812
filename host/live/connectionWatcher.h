// The machine's own inbound connections, as events.
#pragma once

#include <cstdint>
#include <vector>

#include "events/connectionEvent.h"
#include "live/connectionTracker.h"
#include "live/socketDiag.h"
#include "net/ipAddress.h"

namespace mordhost {

class ConnectionWatcher {
public:
    // From now on. The events of remote ends in one of the ranges `flagged` bear EVENT_FLAG_REPLY_TWO, for which the
    // kernel has no equal. Throws RunError.
    explicit ConnectionWatcher(std::vector<AddressRange> flagged);

    // Whether connections are told that come and go between two looks.
    bool SeesAll() const { return m_diag.HearsEnds(); }

    // What becomes readable when there may be events, besides the passing of time; -1 where nothing does.
    int Handle() const { return m_diag.EndsHandle(); }

    // The events since the last look. Connections have the names "connection-1", "connection-2", …, their ends
    // "disconnect-1", …; a process is that of the connection or, as long as none has taken it, that which listens for
    // it. Throws RunError.
    std::vector<ConnectionEvent> Look();

private:
    ConnectionEvent EventOf(const ConnectionChange& change) const;

    SocketDiag m_diag;
    ConnectionTracker m_tracker;
    std::vector<AddressRange> m_flagged;
    int64_t m_kernelVersion;
    // Of the connections that are there, by their numbers: an end has the process of its connection.
    std::map<size_t, ConnectionEvent> m_open;
};

// An address as text.
std::string AddressText(const IpAddress& address);

} // namespace mordhost
