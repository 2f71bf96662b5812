// Requests to stop: an interruption by the user, a request to terminate, the end of the terminal. Each platform has one
// body of this; all commands take their requests from here.
#pragma once

#include <string>

#include "system/runError.h"

namespace mordhost {

// A run that was asked to stop: what() says by what, and what was not done.
class Stopped : public RunError {
public:
    using RunError::RunError;
};

// From now on a request to stop makes StopRequested true instead of ending the process, and breaks off a read of a
// StoppableInput. After the first request, an interruption from the keyboard ends the process at once. A write to a
// pipe that nobody reads fails, and ends nothing by itself. Throws RunError.
void HoldStopRequests();

bool StopRequested();

// What asked first: "SIGTERM", "Ctrl-C". Empty as long as nothing did.
std::string StopCause();

} // namespace mordhost
