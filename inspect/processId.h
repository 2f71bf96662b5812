// Parsing of a process id from the command line.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace mordinspect {

// Returns the number that `text` consists of: decimal digits only; leading zeros are allowed. Returns nothing for any
// other text and for a number of more than 32 bits.
std::optional<uint32_t> ParseProcessId(std::string_view text);

} // namespace mordinspect
