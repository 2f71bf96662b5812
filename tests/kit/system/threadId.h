#pragma once

#include <cstdint>

// The number of the calling thread, as the system itself gives it.
uint32_t ThreadId();
