// The library that contains this code.
#pragma once

#include "zelkBase/unicode.h"

namespace siblings {

// Returns the handle of the library, as the system's look-up of loaded libraries delivers it; it holds no reference.
// Returns null on failure: on Linux also if the code is linked into the program itself. Any thread may call.
void* OwnModule();

// Returns the absolute directory of the library's file, with or without a trailing separator, or an empty text on
// failure. Any thread may call. Throws std::bad_alloc.
WideString OwnDirectory();

} // namespace siblings
