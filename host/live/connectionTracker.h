// Finds the inbound connections that came and went between two looks at the sockets of the machine.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <map>
#include <set>
#include <vector>

#include "live/tcpSocket.h"

namespace mordhost {

// An inbound connection that came or ended.
struct ConnectionChange {
    bool ended = false;
    size_t number = 0; // counted from 1 in the order of coming; the end has the number of its connection
    TcpSocket connection;
    uint64_t listenerInode = 0; // of the socket that accepts the connection
};

class ConnectionTracker {
public:
    // `listeners` and `connections` exist already and are not reported.
    ConnectionTracker(std::vector<TcpSocket> listeners, const std::vector<TcpSocket>& connections);

    // Returns the changes since the last look: first the connections that came, then those that ended. The arguments
    // are the present sockets and those that are known to have ended since the last look. A connection is inbound if a
    // socket listens at its local end now or at the last look, because a server may stop listening. A connection that
    // came and went between two looks is found only if `ended` has it.
    std::vector<ConnectionChange> Look(std::vector<TcpSocket> listeners, const std::vector<TcpSocket>& connections,
                                       const std::vector<TcpSocket>& ended);

private:
    struct Tracked {
        ConnectionChange change;
        bool reported = false; // whether Look has returned it
    };

    const TcpSocket* ListenerOf(const std::vector<TcpSocket>& listeners, const TcpSocket& connection) const;
    void NoteComing(const std::vector<TcpSocket>& listeners, const TcpSocket& connection,
                    std::vector<ConnectionChange>& changes);
    void NoteEnd(uint64_t cookie, std::vector<ConnectionChange>& changes);

    std::vector<TcpSocket> m_listeners; // at the last look
    std::map<uint64_t, Tracked> m_tracked;
    std::set<uint64_t> m_over; // cookies of the last connections that ended, whose end may be reported again
    std::deque<uint64_t> m_overInOrder;
    size_t m_count = 0;
};

} // namespace mordhost
