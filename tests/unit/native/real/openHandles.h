// The handles of this process.
#pragma once

#include <cstddef>

// How many are open, by the system's list of all handles: the count that GetProcessHandleCount gives is 0 under Wine.
// Throws std::runtime_error when the system does not tell.
size_t OpenHandles();

// Holds the count against one handle that comes and goes.
void ExpectThatOneMoreHandleIsCounted();
