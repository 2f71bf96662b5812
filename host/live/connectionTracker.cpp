#include "live/connectionTracker.h"

#include <algorithm>
#include <utility>

namespace mordhost {

namespace {

constexpr size_t mostOver = 10000;

bool IsUnspecified(const IpAddress& address) {
    return std::all_of(address.bytes.begin(), address.bytes.end(), [](uint8_t byte) { return byte == 0; });
}

// A socket that listens on the unspecified v6 address accepts v4 connections too.
bool ListensAt(const TcpSocket& listener, const IpAddress& address, uint16_t port) {
    if (listener.localPort != port) {
        return false;
    }
    return listener.local == address ||
           (IsUnspecified(listener.local) &&
            (listener.local.version == address.version || listener.local.version == IpAddress::Version::v6));
}

} // namespace

ConnectionTracker::ConnectionTracker(std::vector<TcpSocket> listeners, const std::vector<TcpSocket>& connections)
    : m_listeners(std::move(listeners)) {
    for (const TcpSocket& connection : connections) {
        m_tracked[connection.cookie] = {};
    }
}

const TcpSocket* ConnectionTracker::ListenerOf(const std::vector<TcpSocket>& listeners,
                                               const TcpSocket& connection) const {
    for (const std::vector<TcpSocket>* const known : {&listeners, &m_listeners}) {
        const auto listener = std::find_if(known->begin(), known->end(), [&connection](const TcpSocket& candidate) {
            return ListensAt(candidate, connection.local, connection.localPort);
        });
        if (listener != known->end()) {
            return &*listener;
        }
    }
    return nullptr;
}

void ConnectionTracker::NoteComing(const std::vector<TcpSocket>& listeners, const TcpSocket& connection,
                                   std::vector<ConnectionChange>& changes) {
    const bool known = m_tracked.contains(connection.cookie) || m_over.contains(connection.cookie);
    if (known || connection.remotePort == 0) { // a listening socket is not a connection
        return;
    }
    Tracked& tracked = m_tracked[connection.cookie];
    if (const TcpSocket* const listener = ListenerOf(listeners, connection)) {
        tracked = {{false, ++m_count, connection, listener->inode}, true};
        changes.push_back(tracked.change);
    }
}

void ConnectionTracker::NoteEnd(uint64_t cookie, std::vector<ConnectionChange>& changes) {
    const auto tracked = m_tracked.find(cookie);
    if (tracked == m_tracked.end()) {
        return;
    }
    if (tracked->second.reported) {
        changes.push_back(tracked->second.change);
        changes.back().ended = true;
    }
    m_tracked.erase(tracked);
    m_over.insert(cookie);
    m_overInOrder.push_back(cookie);
    if (m_overInOrder.size() > mostOver) {
        m_over.erase(m_overInOrder.front());
        m_overInOrder.pop_front();
    }
}

std::vector<ConnectionChange> ConnectionTracker::Look(std::vector<TcpSocket> listeners,
                                                      const std::vector<TcpSocket>& connections,
                                                      const std::vector<TcpSocket>& ended) {
    std::vector<ConnectionChange> changes;
    std::set<uint64_t> present;
    for (const TcpSocket& connection : connections) {
        present.insert(connection.cookie);
        NoteComing(listeners, connection, changes);
    }
    for (const TcpSocket& connection : ended) {
        NoteComing(listeners, connection, changes);
        present.erase(connection.cookie);
    }
    std::vector<uint64_t> gone;
    for (const auto& [cookie, tracked] : m_tracked) {
        if (!present.contains(cookie)) {
            gone.push_back(cookie);
        }
    }
    std::sort(gone.begin(), gone.end(), [this](uint64_t left, uint64_t right) {
        return m_tracked[left].change.number < m_tracked[right].change.number;
    });
    for (const uint64_t cookie : gone) {
        NoteEnd(cookie, changes);
    }
    m_listeners = std::move(listeners);
    return changes;
}

} // namespace mordhost
