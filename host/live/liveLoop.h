// The loop of the commands that watch the machine.
#pragma once

#include <functional>
#include <optional>
#include <vector>

#include "document/ipAddress.h"
#include "policy/connectionEvent.h"
#include "system/hostSystem.h"

namespace mordhost {

struct LiveOptions {
    std::optional<unsigned> seconds; // duration; if absent, until a stop request
    std::vector<AddressRange> flagged;
};

// Passes each event of the machine's inbound connections to `handle`, until the time is over or at a stop request.
// Reports on the standard error that it is ready, and whether it may miss connections. Throws RunError, also when the
// reader of `output`, the stream that `handle` writes to, is gone, and what `handle` throws.
void WatchConnections(const LiveOptions& options, std::optional<Stream> output,
                      const std::function<void(ConnectionEvent)>& handle);

} // namespace mordhost
