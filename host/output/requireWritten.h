// Detection of lost output.
#pragma once

#include <ostream>
#include <string_view>

namespace mordhost {

// The name of the standard output in messages.
constexpr std::string_view standardOutputName = "the standard output";

// Call it directly after a write to `stream` or a flush of it. Throws RunError if output was lost, with `name` and the
// reason of the system.
void RequireWritten(const std::ostream& stream, std::string_view name);

} // namespace mordhost
