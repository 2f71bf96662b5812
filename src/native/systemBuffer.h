// A local buffer for a reply of the system.
#pragma once

#include <cstddef>

// `size` zeroed bytes, aligned to eight: the system may write fields of eight bytes, and a 32-bit compiler aligns a
// character array to less. Read it with LoadField (remoteLayouts.h).
template <size_t size>
struct SystemBuffer {
    alignas(8) char bytes[size] = {};
};
