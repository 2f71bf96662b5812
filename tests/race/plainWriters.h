// What writes the receiver's plain fields while events run, each by a function of its own: what ThreadSanitizer says of
// them is passed over by these names (plainFields.cpp), and of nothing else.
#pragma once

#include <cstdint>

#include "frame/interfaces.h"

namespace race {

void WriteDefenderMode(IMordRev& receiver, uint32_t mode);
void WriteExceptionMode(IMordRev& receiver, uint32_t mode);
void WriteStarted(IMordRev& receiver, bool started);
void WriteReportSink(IMordRev& receiver, IReportSink* sink);

} // namespace race
