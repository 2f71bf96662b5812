// The fast path for the line of an event.
#pragma once

#include <string>

#include "policy/connectionEvent.h"

namespace mordhost {

// Reads `line`, which it overwrites, into `event` and keeps the memory of its texts. Does not change `event.line`.
// Returns false, with an unspecified `event`, for a line that ReadEvent must read: one that is invalid, names a
// program, or has non-ASCII text, which needs validation.
bool ReadPlainEvent(std::string& line, ConnectionEvent& event);

} // namespace mordhost
