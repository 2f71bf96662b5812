#include "live/liveLoop.h"

#include <chrono>
#include <iostream>
#include <utility>

#include "live/connectionWatcher.h"
#include "live/lookPause.h"
#include "system/lostReaderPosix.h"
#include "system/runError.h"

namespace mordhost {

namespace {

using Clock = std::chrono::steady_clock;

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
        std::cerr << "mordhost: warning: connections shorter than " << PauseAfterLook({}).count()
                  << " ms are missed, because the right to administer the network (CAP_NET_ADMIN) is missing\n";
    }
    std::cerr << "mordhost: watching inbound connections" << std::endl;
    const Clock::time_point end = Clock::now() + std::chrono::seconds(options.seconds.value_or(0));
    std::chrono::milliseconds pause = PauseAfterLook({});
    bool wanted = true;
    while (wanted) {
        wanted = PauseBeforeLook(pause, watcher.Handle(), [&watcher] { return watcher.CollectEnds(); }) &&
                 !(options.seconds && Clock::now() >= end);
        const Clock::time_point begin = Clock::now();
        // Also once at the end, for the last connections.
        for (ConnectionEvent& event : watcher.Look()) {
            handle(std::move(event));
        }
        RequireReader(output);
        pause = PauseAfterLook(Clock::now() - begin);
    }
}

} // namespace mordhost
