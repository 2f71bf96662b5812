// The 64-bit half that lists of threads need where the caller has a gate; a no-op without one. There is a body
// for each width of caller.
#pragma once

#include <cstdint>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace scripted {

void BuildThreadGate();

// Names that its ntdll does not export.
void HideThreadGate(std::set<std::string> names);

// The arguments of each query through it from now on.
std::shared_ptr<std::vector<std::vector<uint64_t>>> RecordGateArguments();

} // namespace scripted
