#include "kit/system/scriptedProcess/gateHalf.h"
#include "unit/native/threadGate.h"

namespace scripted {

namespace {

GateHalf half;

} // namespace

void BuildThreadGate() {
    half = GateHalf{};
    half.Build(ResetGate());
}

void HideThreadGate(std::set<std::string> names) {
    half.hidden = std::move(names);
}

std::shared_ptr<std::vector<GateArguments>> RecordGateArguments() {
    const auto all = std::make_shared<std::vector<GateArguments>>();
    for (const char* const name : {"NtQueryInformationThread", "NtQueryVirtualMemory"}) {
        auto& function = GateInstance().functions[half.AddressOf(name)];
        function = [all, work = function](const GateArguments& arguments) {
            all->push_back(arguments);
            return work(arguments);
        };
    }
    return all;
}

} // namespace scripted
