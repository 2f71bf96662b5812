#include "logging/logState.h"

bool LogFileEnabled = false;
bool LogDebugViewEnabled = false;
constinit ServicePointer<ILogWriter> LoggerObject;
