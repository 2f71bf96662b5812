// The start of logging.
#pragma once

#include "platform/wideChar.h"

// Starts logging as the section "OUTLOG" of "Zelklog.ini" says, in the directory that the base library names.
// "DebugView" switches the debug output; "WriteLog" creates the logger and starts it under `moduleName` at "LogLevel".
// A null `moduleName` creates no logger. A missing file or key counts as 0.
//
// Returns true if that succeeded, even if all logging is off. Returns false, unlogged, if the base library or its
// logger is unavailable; the debug output then already follows the ini file if that could be read, and a former logger
// has been released if the new one was refused. Runs within Init only. Throws std::bad_alloc.
bool StartLogger(const WideChar* moduleName);
