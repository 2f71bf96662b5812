#include "unit/native/threadGate.h"

namespace scripted {

void BuildThreadGate() {}

void HideThreadGate(std::set<std::string>) {}

std::shared_ptr<std::vector<std::vector<uint64_t>>> RecordGateArguments() {
    return std::make_shared<std::vector<std::vector<uint64_t>>>();
}

} // namespace scripted
