// The inbound connections of this machine as events.
#pragma once

#include <cstdint>
#include <map>
#include <vector>

#include "document/ipAddress.h"
#include "live/connectionTracker.h"
#include "live/socketDiag.h"
#include "policy/connectionEvent.h"

namespace mordhost {

class ConnectionWatcher {
public:
    // Reports changes from now on. Events with a remote end in one of the ranges `flagged` have EVENT_FLAG_REPLY_TWO,
    // for which the kernel has no equivalent. Throws RunError.
    explicit ConnectionWatcher(std::vector<AddressRange> flagged);

    // Whether connections that come and go between two looks are found.
    bool SeesAll() const { return m_diag.HearsEnds(); }

    // The descriptor that becomes readable when connections end; -1 if there is none.
    int Handle() const { return m_diag.EndsHandle(); }

    // Reads the reports of ended connections for the next look. Returns whether there were any.
    bool CollectEnds();

    // The events since the last look. Connections are named "connection-1", "connection-2", …, their ends
    // "disconnect-1", …. The process is the one that accepted the connection, or the one that listens while none has.
    // Throws RunError.
    std::vector<ConnectionEvent> Look();

private:
    ConnectionEvent EventOf(const ConnectionChange& change) const;

    SocketDiag m_diag;
    ConnectionTracker m_tracker;
    std::vector<AddressRange> m_flagged;
    int64_t m_kernelVersion;
    std::vector<TcpSocket> m_ended; // since the last look
    std::map<size_t, ConnectionEvent>
        m_open; // present connections by number: the end has the process of the connection
};

} // namespace mordhost
