// Detects output that nobody can receive any more.
#pragma once

#include "system/hostSystem.h"

namespace mordhost {

// Whether the reader of the pipe has closed it, or the terminal has hung up. False for a file.
bool HasLostReader(Stream stream);

} // namespace mordhost
