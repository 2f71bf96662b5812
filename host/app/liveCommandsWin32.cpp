#include "app/commandOptions.h"

namespace mordhost {

// There is no way here to learn of the machine's connections.
void AddLiveCommands(CLI::App&, Action&) {}

} // namespace mordhost
