// Names the case at which a program crashes or hangs.
#pragma once

#include <cstdint>

namespace model {

// Starts the watch; `unit` and `seed` go into its message. A case that takes more than two minutes ends the process
// with exit code 3. A fault or an abort still ends it as usual, after the message.
void StartWatch(const char* unit, uint64_t seed);

// The case that begins now.
void WatchCase(uint64_t number);

} // namespace model
