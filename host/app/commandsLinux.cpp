#include "app/commands.h"

namespace mordhost {

void AddCommands(CLI::App& app, Action& action) {
    AddReplayCommand(app, action);
    AddRecordCommand(app, action);
    AddWatchCommand(app, action);
}

} // namespace mordhost
