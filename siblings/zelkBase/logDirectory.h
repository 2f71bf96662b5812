// Where "Zelklog.ini" and the log files stand.
#pragma once

#include "zelkBase/unicode.h"

namespace siblings {

// The directory that the environment variable ZELK_LOG_DIR names, made absolute; without it (unset or empty) the one in
// which this library itself stands. Ends in its separator. Empty if the system does not tell a directory: a choice that
// cannot be resolved is not replaced by another place.
WideString LogDirectory();

} // namespace siblings
