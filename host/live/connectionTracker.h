// Which inbound connections have come and gone between two looks at the kernel's list.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <map>
#include <set>
#include <vector>

#include "live/tcpSocket.h"

namespace mordhost {

// One inbound connection that came or went.
struct ConnectionChange {
    bool ended = false;
    size_t number = 0; // counted from 1 in the order of coming; an end has that of its connection
    TcpSocket connection;
    uint64_t listenerInode = 0; // of the socket that the connection came to
};

class ConnectionTracker {
public:
    // `listeners` and `connections` are there already: nothing is told of them.
    ConnectionTracker(std::vector<TcpSocket> listeners, const std::vector<TcpSocket>& connections);

    // Looks at what there is now and at what has ended since the last look, as far as that was heard, and tells the
    // changes: what came, then what went. A connection is inbound when a socket listens at its local end, now or at the
    // last look, since a server may stop listening once it is served. One that came and went between two looks is told
    // only if its end was heard.
    std::vector<ConnectionChange> Look(std::vector<TcpSocket> listeners, const std::vector<TcpSocket>& connections,
                                       const std::vector<TcpSocket>& ended);

private:
    struct Tracked {
        ConnectionChange change;
        bool told = false; // whether its coming was
    };

    const TcpSocket* ListenerOf(const std::vector<TcpSocket>& listeners, const TcpSocket& connection) const;
    void NoteComing(const std::vector<TcpSocket>& listeners, const TcpSocket& connection,
                    std::vector<ConnectionChange>& changes);
    void NoteEnd(uint64_t cookie, std::vector<ConnectionChange>& changes);

    std::vector<TcpSocket> m_listeners; // at the last look
    std::map<uint64_t, Tracked> m_tracked;
    std::set<uint64_t> m_over; // cookies of the connections that ended last, whose end may be heard again
    std::deque<uint64_t> m_overInOrder;
    size_t m_count = 0;
};

} // namespace mordhost
