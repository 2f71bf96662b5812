// The reason of a decision, derived from the library's log records.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace mordhost {

// Returns the reason as one phrase. `messages` are those of the records of one event; the phrase is empty if none of
// them is known. `matchedType` is the type of the rule that matched, if any, because the records hold only its guid.
std::string ReasonOf(const std::vector<std::string_view>& messages, const std::string& matchedType);

} // namespace mordhost
