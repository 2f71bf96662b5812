// Requests to stop: an interruption by the user, a request to terminate, the end of the terminal. One body per
// platform.
#pragma once

#include <string>

#include "system/runError.h"

namespace mordhost {

// A run that was stopped: what() names the request and the work that was not done.
class Stopped : public RunError {
public:
    using RunError::RunError;
};

// From now on a stop request sets StopRequested and interrupts reads of a StoppableInput, instead of ending the
// process. After the first request, a keyboard interruption ends the process at once. A write to a pipe without a
// reader fails and does not end the process. Throws RunError.
void HoldStopRequests();

bool StopRequested();

// The name of the first request: "SIGTERM", "Ctrl-C". Empty while there is none.
std::string StopCause();

} // namespace mordhost
