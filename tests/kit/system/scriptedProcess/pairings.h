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
    Caller64Of32,    // 64-bit caller, 32-bit target
    Caller64Of64,    // 64-bit caller and target
};

inline std::vector<Pairing> PairingsOfThisCaller() {
    return Caller::is64Bit ? std::vector{Pairing::Caller64Of32, Pairing::Caller64Of64}
                           : std::vector{Pairing::Wow64CallerOf32, Pairing::Wow64CallerOf64, Pairing::Machine32};
}

inline std::vector<Pairing> PairingsWith32BitTargets() {
    return Caller::is64Bit ? std::vector{Pairing::Caller64Of32}
                           : std::vector{Pairing::Wow64CallerOf32, Pairing::Machine32};
}

inline std::ostream& operator<<(std::ostream& stream, Pairing pairing) {
    static constexpr const char* names[] = {"Wow64CallerOf32", "Wow64CallerOf64", "Machine32", "Caller64Of32",
                                            "Caller64Of64"};
    return stream << names[static_cast<int>(pairing)];
}

} // namespace scripted
