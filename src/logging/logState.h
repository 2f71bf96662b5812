// The log state of the process: whether records are written, and where. StartLogger sets it; every log site tests it.
//
// Plain variables, zero at load. Init writes them on the host's thread before events are handled; from then on all
// threads read them without a lock.
#pragma once

#include "frame/servicePointer.h"

extern bool LogFileEnabled;      // records go to LoggerObject unless that is null; set by the first logger
extern bool LogDebugViewEnabled; // records go to OutputDebugStringW

// The component's logger, started. Null before the first start, and after a start whose new logger was refused. The
// static destructor releases it when the component is unloaded.
extern ServicePointer<ILogWriter> LoggerObject;

// Returns whether records are written anywhere. The level does not matter: only the logger filters by it.
inline bool LoggingEnabled() {
    return LogFileEnabled || LogDebugViewEnabled;
}
