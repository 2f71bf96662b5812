#include "live/liveLoop.h"

#include <chrono>
#include <iostream>
#include <utility>

#include <poll.h>

#include "live/connectionWatcher.h"
#include "system/stopHandlePosix.h"
#include "system/stopRequest.h"

namespace mordhost {

namespace {

using Clock = std::chrono::steady_clock;
constexpr std::chrono::milliseconds betweenLooks(20);

// Waits until the next look. Returns false when the process is to stop.
bool WaitForLook(const ConnectionWatcher& watcher) {
    pollfd handles[] = {{StopHandle(), POLLIN, 0}, {watcher.Handle(), POLLIN, 0}}; // one of -1 is passed over
    poll(handles, 2, static_cast<int>(betweenLooks.count()));
    return !StopRequested();
}

} // namespace

void WatchConnections(const LiveOptions& options, const std::function<void(ConnectionEvent)>& handle) {
    ConnectionWatcher watcher(options.flagged);
    if (!watcher.SeesAll()) {
        std::cerr << "mordhost: warning: without the right to administer the network (CAP_NET_ADMIN), connections "
                     "shorter than "
                  << betweenLooks.count() << " ms are missed\n";
    }
    std::cerr << "mordhost: watching inbound connections" << std::endl;
    const Clock::time_point end = Clock::now() + std::chrono::seconds(options.seconds.value_or(0));
    bool wanted = true;
    while (wanted) {
        wanted = WaitForLook(watcher) && !(options.seconds && Clock::now() >= end);
        for (ConnectionEvent& event : watcher.Look()) { // once more at the end, for what came meanwhile
            handle(std::move(event));
        }
    }
}

} // namespace mordhost
