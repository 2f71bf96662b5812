// Output that must not be lost without a word.
#pragma once

#include <ostream>
#include <string_view>

namespace mordhost {

// What messages call the standard output.
constexpr std::string_view standardOutputName = "the standard output";

// To be called behind a write to `stream` or a flush of it: throws RunError when some output was lost. The message
// calls the stream `name` and has the system's words for the reason.
void RequireWritten(const std::ostream& stream, std::string_view name);

} // namespace mordhost
