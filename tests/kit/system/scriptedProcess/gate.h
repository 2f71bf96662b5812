// The 64-bit half of a fake 32-bit process: the bodies of gateEnter.h in tests of a 32-bit caller.
//
// It belongs to the scripted system, whose limit of reads holds for GateCopyIn and GateCompare too, and is put back to
// its beginning beside it, by ResetGate.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "kit/system/scriptedProcess/targetMemory.h"

namespace scripted {

// A read of memory that is not there, or of more than the limit. On a real system it ends the process.
struct GateFault {
    uint64_t address;
};

using GateArguments = std::vector<uint64_t>;

struct Gate {
    TargetMemory memory; // the structures of the calling process itself
    uint64_t threadBlock = 0;

    // What each address does when it is called. GateHalf (gateHalf.h) fills it. The arguments that were not passed are
    // not in the vector.
    std::map<uint64_t, std::function<uint64_t(const GateArguments&)>> functions;

    // Names of the functions at those addresses, for the lines of calls, and the arguments of the last call.
    std::map<uint64_t, std::string> names;
    GateArguments lastArguments;

    uint64_t readsOfNothing = 0; // copies from address 0 in a row; too many of them throw std::logic_error
};

Gate& GateInstance();
Gate& ResetGate();

} // namespace scripted
