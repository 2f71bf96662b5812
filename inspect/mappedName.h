// The name in a reply to a query for the file that is mapped at an address.
#pragma once

#include <cstddef>

#include "refusal.h"

namespace mordinspect {

// The text of the UNICODE_STRING that the reply begins with, in the layout of a 32-bit machine or of a 64-bit one; as
// much of it as stands in the reply.
WideText MappedName(const void* reply, size_t size, bool machineIs32Bit);

} // namespace mordinspect
