// The pairings of machine, caller and target that this program's width of caller can have.
#pragma once

#include <ostream>
#include <vector>

#include "native/caller.h"

namespace scripted {

enum class Pairing {
    Wow64CallerOf32, // 32-bit caller and target on a 64-bit machine
    Wow64CallerOf64, // 32-bit caller, 64-bit target
    Machine32,       // a 32-bit machine
    WideCallerOf32,  // 64-bit caller, 32-bit target
    WideCallerOf64,  // 64-bit caller and target
};

inline std::vector<Pairing> PairingsOfThisCaller() {
    return Caller::isWide ? std::vector{Pairing::WideCallerOf32, Pairing::WideCallerOf64}
                          : std::vector{Pairing::Wow64CallerOf32, Pairing::Wow64CallerOf64, Pairing::Machine32};
}

inline std::vector<Pairing> PairingsWith32BitTargets() {
    return Caller::isWide ? std::vector{Pairing::WideCallerOf32}
                          : std::vector{Pairing::Wow64CallerOf32, Pairing::Machine32};
}

inline std::ostream& operator<<(std::ostream& stream, Pairing pairing) {
    static constexpr const char* names[] = {"Wow64CallerOf32", "Wow64CallerOf64", "Machine32", "WideCallerOf32",
                                            "WideCallerOf64"};
    return stream << names[static_cast<int>(pairing)];
}

} // namespace scripted
