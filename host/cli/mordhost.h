// The program as a function.
#pragma once

#include <string>
#include <vector>

namespace mordhost {

// Runs mordhost with its arguments (UTF-8, without the program name) and returns its exit code.
int RunMordhost(std::vector<std::string> arguments);

} // namespace mordhost
