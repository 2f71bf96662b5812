// Windows has no interface to watch the connections of the machine.
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
    return commands;
}

} // namespace mordhost
