// Work with little stack, as a host's worker threads may have it.
#pragma once

#include <cstddef>
#include <functional>

constexpr size_t smallStackSize = 256 * 1024;

// Runs `work` to its end on a separate thread with a stack of smallStackSize bytes. `work` must not throw.
void RunOnSmallStack(const std::function<void()>& work);

// Returns the number of free bytes of the calling thread's stack, as the system reports it.
size_t StackLeft();
