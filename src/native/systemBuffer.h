// A local buffer that the system fills.
#pragma once

#include <cstddef>

// `size` bytes, cleared, at a multiple of eight: the system may write fields of eight bytes, and a 32-bit compiler
// aligns an array of characters to less. Read by LoadField (remoteLayouts.h).
template <size_t size>
struct SystemBuffer {
    alignas(8) char bytes[size] = {};
};
