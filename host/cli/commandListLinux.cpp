#include "cli/commandList.h"

namespace mordhost {

Commands AllCommands() {
    Commands commands;
    commands.push_back(MakeReplayCommand());
    commands.push_back(MakeExplainCommand());
    commands.push_back(MakeDiffCommand());
    commands.push_back(MakeRehearseCommand());
    commands.push_back(MakeCheckCommand());
    commands.push_back(MakeUnusedCommand());
    commands.push_back(MakeSuggestCommand());
    commands.push_back(MakeRecordCommand());
    commands.push_back(MakeWatchCommand());
    return commands;
}

} // namespace mordhost
