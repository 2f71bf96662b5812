// A stack as a 32-bit caller has it.
#pragma once

#include <functional>

namespace scripted {

// Calls `run` on a stack that lies below 4 GiB, so that addresses of its local variables fit 32 bits, and waits for it.
// What it throws is thrown here.
void OnLowStack(const std::function<void()>& run);

} // namespace scripted
