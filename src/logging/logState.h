// Whether records go anywhere, and where: the process-wide state that StartLogger sets and every log site tests.
//
// Plain variables, all zero at load. Init writes them on the host's thread before events flow; from then on all threads
// read them without a lock.
#pragma once

#include "frame/servicePointer.h"

extern bool LogFileEnabled;      // records go to LoggerObject; set once a logger was made and started
extern bool LogDebugViewEnabled; // records go to OutputDebugStringW

// The component's logger. Its destructor, which runs when the component is unloaded, releases the logger.
extern ServicePointer<ILogWriter> LoggerObject;

// Whether a record goes anywhere. The level plays no part: what the logger drops is its own business.
inline bool LoggingEnabled() {
    return LogFileEnabled || LogDebugViewEnabled;
}
