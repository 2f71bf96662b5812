#include "decide/reasonCode.h"

#include <array>
#include <cstddef>

namespace mordhost {

namespace {

constexpr std::array reasons = {
    NamedReason{ReasonCode::unknown, "unknown"},
    NamedReason{ReasonCode::noRule, "no-rule"},
    NamedReason{ReasonCode::machineAllowed, "machine-allowed"},
    NamedReason{ReasonCode::machineAllowedDotKept, "machine-allowed-dot-kept"},
    NamedReason{ReasonCode::noDot, "no-dot"},
    NamedReason{ReasonCode::dotNamesNoMachine, "dot-names-no-machine"},
    NamedReason{ReasonCode::allowListEmpty, "allow-list-empty"},
    NamedReason{ReasonCode::noAllowedMachine, "no-allowed-machine"},
    NamedReason{ReasonCode::receiverNotStarted, "receiver-not-started"},
    NamedReason{ReasonCode::networkErrorAllowed, "network-error-allowed"},
    NamedReason{ReasonCode::networkErrorBlocked, "network-error-blocked"},
    NamedReason{ReasonCode::queryError, "query-error"},
    NamedReason{ReasonCode::brokenAnswer, "broken-answer"},
    NamedReason{ReasonCode::malformedAnswer, "malformed-answer"},
    NamedReason{ReasonCode::emptyAnswer, "empty-answer"},
    NamedReason{ReasonCode::allForbidMode, "all-forbid-mode"},
    NamedReason{ReasonCode::emergencyMode, "emergency-mode"},
    NamedReason{ReasonCode::disconnect, "disconnect"},
    NamedReason{ReasonCode::actionTable, "action-table"},
    NamedReason{ReasonCode::afterDecisionMode, "after-decision-mode"},
};

// NameOf uses the code as the index.
static_assert([] {
    for (size_t i = 0; i < reasons.size(); ++i) {
        if (static_cast<size_t>(reasons[i].code) != i) {
            return false;
        }
    }
    return true;
}());

} // namespace

std::span<const NamedReason> ReasonCodes() {
    return reasons;
}

std::string_view NameOf(ReasonCode code) {
    return reasons[static_cast<size_t>(code)].name;
}

} // namespace mordhost
