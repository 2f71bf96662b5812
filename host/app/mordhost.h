// The program.
#pragma once

#include <string>
#include <vector>

namespace mordhost {

// Runs mordhost with its arguments, which are UTF-8 and do not hold the program's name, and returns its exit code.
int RunMordhost(std::vector<std::string> arguments);

} // namespace mordhost
