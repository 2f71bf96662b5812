// The process id as it stands on the command line.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace mordinspect {

// The number that `text` consists of: decimal digits and nothing else, zeros in front among them. Empty for any other
// text, and for a number of more than 32 bits.
std::optional<uint32_t> ParseProcessId(std::string_view text);

} // namespace mordinspect
