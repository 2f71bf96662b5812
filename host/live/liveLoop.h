// The loop of the commands that watch the machine.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <vector>

#include "events/connectionEvent.h"
#include "net/ipAddress.h"

namespace mordhost {

struct LiveOptions {
    std::optional<unsigned> seconds; // without them: until the user interrupts the process
    std::vector<AddressRange> flagged;
};

// Watches the machine's inbound connections and hands each event to `handle`, until the time is over or a request to
// stop is made. Says on the standard error when it is ready, and whether it may miss connections.
// Throws RunError, and what `handle` throws.
void WatchConnections(const LiveOptions& options, const std::function<void(ConnectionEvent)>& handle);

} // namespace mordhost
