#include "live/liveLoop.h"

#include <algorithm>
#include <chrono>
#include <iostream>
#include <utility>

#include <poll.h>

#include "live/connectionWatcher.h"
#include "system/lostReaderPosix.h"
#include "system/runError.h"
#include "system/stopHandlePosix.h"
#include "system/stopRequest.h"

namespace mordhost {

namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

constexpr milliseconds betweenLooks(20);

// The kernel searches all its sockets for each look. The pause in relation to that time limits the use of the processor
// on a machine with very many sockets to a quarter.
constexpr int pausePerLook = 3;

// Waits for `pause`. Returns false at a stop request. Connections that end meanwhile are only collected: a look for
// each of them would keep the processor busy.
bool WaitForLook(ConnectionWatcher& watcher, milliseconds pause) {
    const Clock::time_point due = Clock::now() + pause;
    bool collects = true;
    while (!StopRequested()) {
        const auto left = std::chrono::ceil<milliseconds>(due - Clock::now());
        if (left <= milliseconds(0)) {
            return true;
        }
        pollfd handles[] = {{StopHandle(), POLLIN, 0}, {collects ? watcher.Handle() : -1, POLLIN, 0}};
        poll(handles, 2, static_cast<int>(left.count()));
        if (handles[1].revents != 0) {
            collects = watcher.CollectEnds(); // false for an error, which would end each further poll at once
        }
    }
    return false;
}

void RequireReader(std::optional<Stream> output) {
    if (output && HasLostReader(*output)) {
        throw RunError("cannot write the standard output: its reader is gone");
    }
}

} // namespace

void WatchConnections(const LiveOptions& options, std::optional<Stream> output,
                      const std::function<void(ConnectionEvent)>& handle) {
    ConnectionWatcher watcher(options.flagged);
    if (!watcher.SeesAll()) {
        std::cerr << "mordhost: warning: connections shorter than " << betweenLooks.count()
                  << " ms are missed, because the right to administer the network (CAP_NET_ADMIN) is missing\n";
    }
    std::cerr << "mordhost: watching inbound connections" << std::endl;
    const Clock::time_point end = Clock::now() + std::chrono::seconds(options.seconds.value_or(0));
    milliseconds pause = betweenLooks;
    bool wanted = true;
    while (wanted) {
        wanted = WaitForLook(watcher, pause) && !(options.seconds && Clock::now() >= end);
        const Clock::time_point begin = Clock::now();
        // Also once at the end, for the last connections.
        for (ConnectionEvent& event : watcher.Look()) {
            handle(std::move(event));
        }
        RequireReader(output);
        pause = std::max(betweenLooks, std::chrono::ceil<milliseconds>(pausePerLook * (Clock::now() - begin)));
    }
}

} // namespace mordhost
