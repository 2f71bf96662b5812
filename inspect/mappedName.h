// The file name in a reply to MemoryMappedFilenameInformation.
#pragma once

#include <cstddef>

#include "refusal.h"

namespace mordinspect {

// Returns the text of the UNICODE_STRING at the start of `reply`, `size` bytes in the layout of a 32-bit or a 64-bit
// machine. The text must be within the reply: it is truncated at the end of the reply, and empty if its address is
// outside. Throws std::bad_alloc.
WideText MappedName(const void* reply, size_t size, bool machineIs32Bit);

} // namespace mordinspect
