// The factory that a module exports as "CreateZelkObject".
#pragma once

#include "frame/interfaces.h"
#include "platform/platform.h"

// Returns the factory of `module`, or null if it does not export one or `module` is null. Any thread may call.
inline CreateZelkObjectFunction FindFactory(platform::ModuleHandle module) {
    return reinterpret_cast<CreateZelkObjectFunction>(platform::GetProcAddress(module, "CreateZelkObject"));
}
