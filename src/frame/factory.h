// The factory of a module: its export "CreateZelkObject".
#pragma once

#include "frame/interfaces.h"
#include "platform/platform.h"

// The factory of `module`, or null when it exports none.
inline CreateZelkObjectFunction FindFactory(platform::ModuleHandle module) {
    return reinterpret_cast<CreateZelkObjectFunction>(platform::GetProcAddress(module, "CreateZelkObject"));
}
