// The subcommands of mordhost, each with its options.
#pragma once

#include <functional>

#include <CLI/CLI.hpp>

namespace mordhost {

// What a subcommand does once its arguments have been read. Throws what the run throws.
using Action = std::function<void()>;

// Adds all subcommands of this platform to `app`. The one that is chosen stores its action in `action`, which must
// outlive the parsing.
void AddCommands(CLI::App& app, Action& action);

void AddReplayCommand(CLI::App& app, Action& action);
void AddRecordCommand(CLI::App& app, Action& action); // Linux alone
void AddWatchCommand(CLI::App& app, Action& action);  // Linux alone

} // namespace mordhost
