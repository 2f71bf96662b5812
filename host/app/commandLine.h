// The command line of mordhost.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace mordhost {

// The command that was chosen, with its options. Throws what the command throws.
using Action = std::function<void()>;

// Reads the arguments, without the program's own name, in UTF-8. Returns an empty action when there is nothing more to
// do, as after --help or when they are refused: that has been told then, and `code` is the exit code.
Action ReadCommandLine(std::vector<std::string> arguments, int& code);

} // namespace mordhost
