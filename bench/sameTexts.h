// That the floor does the work of the library.
#pragma once

#include "frame/interfaces.h"
#include "workload.h"

namespace bench {

// Has the receiver decide the event once and compares what it wrote with what the floor writes. Throws
// std::runtime_error when they differ, or the event is not decided as it has to be: nothing measured would count then.
void CompareWithFloor(IMordRev& receiver, const Workload& workload);

} // namespace bench
