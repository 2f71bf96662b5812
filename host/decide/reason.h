// Why an event was decided as it was: one phrase, told from the library's own records.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace mordhost {

// The phrase for the records of one event, whose messages these are; empty when they hold none that is known. Decides
// nothing: each phrase stands for a record that the library wrote. `matchedType` is the type word of the rule that
// matched, if one did: the records name a rule by its guid, and people know it by its type.
std::string ReasonOf(const std::vector<std::string_view>& messages, const std::string& matchedType);

} // namespace mordhost
