// The pause between two looks at the sockets of the machine.
#pragma once

#include <chrono>
#include <functional>

namespace mordhost {

// Waits for `pause`, whatever happens at `handle`, a descriptor or -1: a look for each connection that ends would keep
// the processor busy. Calls `collect` whenever `handle` is ready, to read from it. After `collect` has returned false
// it ignores `handle`, because an error there would end each further poll at once. Returns false at a stop request.
bool PauseBeforeLook(std::chrono::milliseconds pause, int handle, const std::function<bool()>& collect);

// The pause after a look that took `look`: 20 ms, and at least three times as long as the look. The kernel searches all
// its sockets for a look, which would keep the processor busy on a machine with very many.
std::chrono::milliseconds PauseAfterLook(std::chrono::nanoseconds look);

} // namespace mordhost
