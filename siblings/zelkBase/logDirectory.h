// The directory of "Zelklog.ini" and of the log files.
#pragma once

#include "zelkBase/unicode.h"

namespace siblings {

// Returns the absolute directory that the environment variable ZELK_LOG_DIR names or, if that is unset or empty, the
// directory of this library, with a trailing separator. Returns an empty text if the system fails to deliver it: an
// invalid choice is not replaced by another directory. Throws std::bad_alloc.
WideString LogDirectory();

} // namespace siblings
