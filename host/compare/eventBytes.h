// A connection event as bytes.
#pragma once

#include "compare/bytes.h"
#include "policy/connectionEvent.h"

namespace mordhost {

void PutEvent(ByteWriter& out, const ConnectionEvent& event);

// Keeps the memory of the texts of `event`. The place of a program's name is not transferred.
void GetEvent(ByteReader& in, ConnectionEvent& event);

} // namespace mordhost
