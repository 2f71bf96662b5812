#include "live/connectionWatcher.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <utility>

#include <sys/utsname.h>

#include "frame/values.h"
#include "live/processOwners.h"
#include "policy/timestamp.h"

namespace mordhost {

namespace {

// The kernel version stands for the driver version: "6.1.90" is 6001090.
int64_t KernelVersion() {
    utsname names{};
    uname(&names);
    int64_t major = 0;
    int64_t minor = 0;
    int64_t patch = 0;
    std::sscanf(names.release, "%ld.%ld.%ld", &major, &minor, &patch);
    return major * 1000000 + minor * 1000 + patch;
}

} // namespace

ConnectionWatcher::ConnectionWatcher(std::vector<AddressRange> flagged)
    : m_tracker(m_diag.Listeners(), m_diag.Connections()), m_flagged(std::move(flagged)),
      m_kernelVersion(KernelVersion()) {}

bool ConnectionWatcher::CollectEnds() {
    const std::vector<TcpSocket> ended = m_diag.TakeEnded();
    m_ended.insert(m_ended.end(), ended.begin(), ended.end());
    return !ended.empty();
}

std::vector<ConnectionEvent> ConnectionWatcher::Look() {
    // The ends first: a connection that ends after this is still in the list, or is reported at the next look.
    CollectEnds();
    const std::vector<TcpSocket> ended = std::exchange(m_ended, {});
    const std::vector<TcpSocket> connections = m_diag.Connections();
    const std::vector<ConnectionChange> changes = m_tracker.Look(m_diag.Listeners(), connections, ended);

    std::set<uint64_t> inodes;
    for (const ConnectionChange& change : changes) {
        if (!change.ended) {
            inodes.insert({change.connection.inode, change.listenerInode});
        }
    }
    inodes.erase(0);
    const std::map<uint64_t, ProcessOwner> owners = FindOwners(inodes);

    std::vector<ConnectionEvent> events;
    for (const ConnectionChange& change : changes) {
        ConnectionEvent event = EventOf(change);
        if (change.ended) {
            const auto open = m_open.extract(change.number);
            event.pid = open.mapped().pid;
            event.process = open.mapped().process;
            event.flags = *open.mapped().flags | EVENT_FLAG_DISCONNECT;
        } else {
            auto owner = owners.find(change.connection.inode);
            owner = owner == owners.end() ? owners.find(change.listenerInode) : owner;
            if (owner != owners.end()) {
                event.pid = owner->second.pid;
                event.process = owner->second.path;
            }
            m_open[change.number] = event;
        }
        events.push_back(std::move(event));
    }
    return events;
}

ConnectionEvent ConnectionWatcher::EventOf(const ConnectionChange& change) const {
    const bool flagged = std::any_of(m_flagged.begin(), m_flagged.end(), [&change](const AddressRange& range) {
        return range.Contains(change.connection.remote);
    });
    ConnectionEvent event;
    event.time = Timestamp(UtcNow());
    event.name = (change.ended ? "disconnect-" : "connection-") + std::to_string(change.number);
    event.flags = flagged ? static_cast<uint32_t>(EVENT_FLAG_REPLY_TWO) : 0;
    event.remoteAddress = TextOf(change.connection.remote);
    event.remotePort = change.connection.remotePort;
    event.localAddress = TextOf(change.connection.local);
    event.localPort = change.connection.localPort;
    event.netDrv = m_kernelVersion;
    return event;
}

} // namespace mordhost
