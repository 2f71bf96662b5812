// All commands of mordhost. One body per platform.
#pragma once

#include "cli/command.h"

namespace mordhost {

// The commands of this platform, in the order of the help text.
Commands AllCommands();

std::unique_ptr<Command> MakeReplayCommand();
std::unique_ptr<Command> MakeExplainCommand();
std::unique_ptr<Command> MakeDiffCommand();
std::unique_ptr<Command> MakeRehearseCommand();
std::unique_ptr<Command> MakeCheckCommand();
std::unique_ptr<Command> MakeUnusedCommand();
std::unique_ptr<Command> MakeSuggestCommand();
std::unique_ptr<Command> MakeRecordCommand(); // Linux only
std::unique_ptr<Command> MakeWatchCommand();  // Linux only

} // namespace mordhost
