// Names the case at which a program crashes or hangs.
#pragma once

#include <cstdint>
#include <string>

namespace model {

// Starts the watch; its message names the case as a number of `run`. A case that takes more than two minutes ends the
// process with exit code 3. A fault or an abort still ends it as usual, after the message.
void StartWatch(const std::string& run);

// The case that begins now.
void WatchCase(uint64_t number);

} // namespace model
