// The end of some memory of this process behind which nothing can be read, by this process or by another.
#pragma once

#include <cstdint>

// The same address at each call, with 64 KiB before it that can be read and written; 0 when there is no such place.
uintptr_t UnreadableEnd();
