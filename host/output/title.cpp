#include "output/title.h"

#include "frame/values.h"
#include "output/boundedText.h"
#include "output/counted.h"
#include "policy/modeNames.h"

namespace mordhost {

namespace {

constexpr size_t widestMachineId = 64;

} // namespace

std::string TitleOf(const std::string& policyName, const Policy& policy) {
    return Printable(policyName) + ": machine id " +
           Printable(policy.machineId.value_or("from the machine"), widestMachineId) + ", defender mode " +
           NameOf(policy.defenderMode.value_or(MODE_ACTION_TABLE), defenderModes) + ", exception mode " +
           NameOf(policy.exceptionMode.value_or(EXCEPTION_BLOCK), exceptionModes) + ", " +
           Counted(policy.rules.size(), "rule") + ", " + Counted(policy.dots.size(), "dot");
}

} // namespace mordhost
