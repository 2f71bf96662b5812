// The start of logging.
#pragma once

#include "platform/wideChar.h"

// Reads the section "OUTLOG" of "Zelklog.ini", in the directory that the base library tells, and sets the log state:
// "DebugView" switches the debug output, "WriteLog" makes the logger and starts it under `moduleName` at "LogLevel". A
// null `moduleName` makes no logger. Returns true when logging is settled, also as off; false, with nothing logged,
// when the base library or its logger could not be had. Runs within Init alone.
bool StartLogger(const WideChar* moduleName);
