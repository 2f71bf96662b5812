// The options that the commands share which watch the machine.
#pragma once

#include <CLI/CLI.hpp>

#include "live/liveLoop.h"

namespace mordhost {

// Adds the options to `command`; they are stored in `options`, which must outlive the parsing.
void AddLiveOptions(CLI::App& command, LiveOptions& options);

} // namespace mordhost
