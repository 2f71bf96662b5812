// Running a target on one input, with a limit of time.
#pragma once

#include "fuzz/targets.h"

// Calls target(data, size). Ends the process with a message if the call takes longer than 20 to 21 seconds. One thread
// alone.
void RunInput(FuzzTarget* target, const uint8_t* data, size_t size);
