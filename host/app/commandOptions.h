// The parts of the command line.
#pragma once

#include "app/commandLine.h"
#include "app/commands.h"

namespace CLI {
class App;
}

namespace mordhost {

// Adds the options that all commands share which decide. They are stored in `options`, which must outlive the parsing.
void AddRunOptions(CLI::App& command, RunOptions& options);

// Adds the commands that watch the machine, where it can be watched. The one that is chosen stores itself in `action`,
// which must outlive the parsing.
void AddLiveCommands(CLI::App& app, Action& action);

} // namespace mordhost
