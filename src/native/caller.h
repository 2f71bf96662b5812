// The width of the caller, that is, of this build.
#pragma once

#include "native/remoteLayouts.h"

// The layouts of the caller's own structures, and the address of its width. The build names the width where it is not
// that of the compiler: tests run the code of a 32-bit caller in a 64-bit program.
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

// What of an address or a size reaches a function of the caller's width.
constexpr uintptr_t CutToCaller(uint64_t value) {
    return static_cast<uintptr_t>(static_cast<Caller::Pointer>(value));
}

// An address of the caller's width as a 64-bit one, sign-extended.
constexpr uint64_t To64BitAddress(Caller::Pointer address) {
    return Caller::is64Bit ? static_cast<uint64_t>(address)
                           : static_cast<uint64_t>(static_cast<int64_t>(static_cast<int32_t>(address)));
}
