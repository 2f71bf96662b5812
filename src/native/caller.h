// The bitness of the caller, that is, of this build.
#pragma once

#include "native/remoteLayouts.h"

// The layouts of the caller's own structures (Bits32 or Bits64) and its bitness. The build defines MORDREV_CALLER_BITS
// if it differs from the compiler's: tests run the code of a 32-bit caller in a 64-bit program.
template <int bits>
struct CallerOf;

template <>
struct CallerOf<32> : Bits32 {
    static constexpr bool is64Bit = false;
};

template <>
struct CallerOf<64> : Bits64 {
    static constexpr bool is64Bit = true;
};

#ifdef MORDREV_CALLER_BITS
using Caller = CallerOf<MORDREV_CALLER_BITS>;
#else
using Caller = CallerOf<sizeof(void*) * 8>;
#endif

// Truncates an address or a size to the caller's pointer width, as a parameter of a system function.
constexpr uintptr_t TruncateToCaller(uint64_t value) {
    return static_cast<uintptr_t>(static_cast<Caller::Pointer>(value));
}

// Widens an address of the caller's width to 64 bits, sign-extended.
constexpr uint64_t To64BitAddress(Caller::Pointer address) {
    return Caller::is64Bit ? static_cast<uint64_t>(address)
                           : static_cast<uint64_t>(static_cast<int64_t>(static_cast<int32_t>(address)));
}
