// The library that this code stands in.
#pragma once

#include "zelkBase/unicode.h"

namespace siblings {

// Its handle, as the system's look-up of loaded libraries gives it; not counted. Null when the code stands in the
// program itself on a system where that has no such handle.
void* OwnModule();

// The absolute directory of its file, with or without a separator at the end; empty if the system does not tell it.
WideString OwnDirectory();

} // namespace siblings
