// The options of the commands that watch the machine.
#pragma once

#include "cli/command.h"
#include "live/liveLoop.h"

namespace mordhost {

void DeclareLiveOptions(Arguments& arguments, LiveOptions& options);

} // namespace mordhost
