// The options of the commands that watch the machine.
#pragma once

#include "cli/command.h"
#include "live/liveLoop.h"

namespace mordhost {

void DeclareLiveOptions(Arguments& arguments, LiveOptions& options);

// Call it after WatchConnections. Throws Stopped if a stop request came before the end of a given time. Without a given
// time, a stop request is the normal end.
void RequireWholeTime(const LiveOptions& options);

} // namespace mordhost
