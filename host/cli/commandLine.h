// The command line of mordhost.
#pragma once

#include <string>
#include <vector>

#include "cli/command.h"

namespace mordhost {

// Parses the arguments (UTF-8, without the program name) and stores those of the selected command. Returns that
// command, or null if there is nothing to do: after --help and --version, which it writes to the standard output, and
// after an error, which it writes to the standard error. `code` is the exit code then.
Command* ReadCommandLine(const Commands& commands, std::vector<std::string> arguments, int& code);

} // namespace mordhost
