// The time field of a log record.
#pragma once

#include <cstdint>
#include <string>

#include "platform/wideChar.h"

// The present time as "2026-11-16 14:03:07", always in UTC+8, whatever the machine's time zone says: records of a fleet
// are compared by it.
std::basic_string<WideChar> LogTimestamp();

// The same for a given time, in seconds since the start of 1970, UTC.
std::basic_string<WideChar> FormatLogTimestamp(int64_t secondsSince1970);
