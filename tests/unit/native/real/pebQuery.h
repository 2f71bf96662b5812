// A substitute for the system's query for the PEB of a process of the other width, see systemTellsPeb.h. There is a
// body for each width of caller.
#pragma once

#include "platform/processApi.h"

// Returns whether the system does not report every PEB of that process: a 32-bit process has two.
bool LacksPebQuery(platform::Handle process);

// Loads the function table and puts the substitute into it.
void ProvidePebQuery();

// Loads the function table and restores the entry of the system, or its absence.
void WithdrawPebQuery();
