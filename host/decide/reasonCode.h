// The codes of the reasons. A published name never changes.
#pragma once

#include <span>
#include <string_view>

namespace mordhost {

enum class ReasonCode {
    unknown, // no log record names the reason, as with --no-log
    noRule,
    machineAllowed,
    machineAllowedDotKept,
    noDot,
    dotNamesNoMachine,
    allowListEmpty,
    noAllowedMachine,
    receiverNotStarted,
    networkErrorAllowed,
    networkErrorBlocked,
    queryError,
    brokenAnswer,
    malformedAnswer,
    emptyAnswer,
    allForbidMode,
    emergencyMode,
    disconnect,
    actionTable,
    afterDecisionMode,
};

struct NamedReason {
    ReasonCode code;
    std::string_view name; // in kebab-case
};

// All codes, in the order of the enumeration.
std::span<const NamedReason> ReasonCodes();

std::string_view NameOf(ReasonCode code);

} // namespace mordhost
