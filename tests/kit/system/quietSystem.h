// An operating system and siblings that do as little as they can: no file, no process, no output, no allocation. For
// what runs very often, and for counting what the library itself allocates.
//
// A program that links `quietSystem` gets these bodies of platform.h, and no process is ever found: the other siblings
// and systems of this kit do not go with it. Logging is on from the first start; later ones leave the flag as it is.
// The converter makes one unit of each byte and the other way round. The machine id is "HOST".
#pragma once

#include <cstdint>

#include "platform/wideChar.h"

namespace kit {

// The receiver of the records, or null.
extern void (*takeRecord)(const WideChar* text, int32_t level);

} // namespace kit
