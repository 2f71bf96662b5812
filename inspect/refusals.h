// Why the library gave nothing.
//
// The library drops the system's reasons. Each function here goes the same steps again, through the same access layer,
// and names the first that fails; a target that changed meanwhile may make it name another, or none.
#pragma once

#include <cstdint>

#include "inspection.h"
#include "native/native.h"

namespace mordinspect {

Refusal WhyNoParameterString(Native& native, uint32_t fieldIndex);
Refusal WhyNoModules(Native& native, ModuleKind kind);
Refusal WhyNoThread(Native& native, uint32_t threadId);
Refusal WhyNoParent(Native& native);
Refusal WhyNoProcesses(Native& native);

} // namespace mordinspect
