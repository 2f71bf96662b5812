// Work with little stack, as a host's worker threads may have it.
#pragma once

#include <cstddef>
#include <functional>

constexpr size_t smallStackSize = 256 * 1024;

// Runs `work` to its end on a thread of its own with a stack of smallStackSize bytes. `work` must not throw.
void RunOnSmallStack(const std::function<void()>& work);

// How many bytes of the calling thread's stack lie before its end, as the system tells it.
size_t StackLeft();
