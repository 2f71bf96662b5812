// Names the case at which a program crashes or hangs.
#pragma once

#include <cstdint>
#include <string>

namespace model {

// Starts the watchdog. Its message names the case as a number of `run`. A case of more than two minutes ends the
// process with exit code 3. A fault or an abort ends the process as usual, after the message.
void StartWatch(const std::string& run);

// Sets the number of the current case.
void WatchCase(uint64_t number);

} // namespace model
