// The usual way to read the line of an event.
#pragma once

#include <string>

#include "events/connectionEvent.h"

namespace mordhost {

// Reads `line`, which it spoils, into `event`, whose texts keep their memory; `event.line` stays as it is. Returns
// false, with anything in `event`, for a line that is no event, for one with text beyond ASCII, whose encoding is to be
// checked, and for one that names a program. These are for ReadEvent, which knows the place of each value.
bool ReadPlainEvent(std::string& line, ConnectionEvent& event);

} // namespace mordhost
