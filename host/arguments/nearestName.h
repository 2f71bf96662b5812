// Suggestions for mistyped names.
#pragma once

#include <string_view>
#include <vector>

namespace mordhost {

// The number of insertions, deletions, replacements and exchanges of neighbours that make `one` into `other`.
size_t EditDistance(std::string_view one, std::string_view other);

// The name with the least edit distance to `typed`; the first of several. Empty if none is close: if more than a third
// of the longer of the two, and more than two characters, differ.
std::string_view NearestName(std::string_view typed, const std::vector<std::string_view>& names);

} // namespace mordhost
