// Lists of names for completions.
#pragma once

#include <string>

#include "arguments/optionTable.h"

namespace mordhost {

// The names separated by spaces.
std::string ChoiceWords(const OptionEntry& option);
std::string OptionWords(const std::vector<OptionEntry>& options);
std::string CommandWords();

} // namespace mordhost
