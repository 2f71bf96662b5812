// A way to the PEB of a process of the other width where the system tells none, see systemTellsPeb.h. There is a body
// for each width of caller.
#pragma once

#include "platform/processApi.h"

// Whether the system leaves one of the PEBs of that process untold: a 32-bit process has two.
bool LacksPebQuery(platform::Handle process);

// Puts a function into the loaded table, in the place of the one that does not tell, that finds out in another way.
void ProvidePebQuery();
