// Whether this system tells this program where the PEB of a process lies, of that process's own width.
//
// Windows always does. Wine before 10 does not for a process of the other width: a 32-bit program lacks
// NtWow64QueryInformationProcess64, and a 64-bit one gets the number 1 for the address of a 32-bit PEB. There is a body
// for each width of caller.
#pragma once

#include "platform/processApi.h"

bool SystemTellsPeb(platform::Handle process);
