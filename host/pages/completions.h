// The completions of the shells, made from the option table.
#pragma once

#include <string>

namespace mordhost {

std::string BashCompletion();
std::string ZshCompletion();
std::string FishCompletion();

} // namespace mordhost
