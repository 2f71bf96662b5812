#include "decide/reasonText.h"

namespace mordhost {

std::string_view PhraseOf(ReasonCode code) {
    switch (code) {
    case ReasonCode::unknown:
    case ReasonCode::machineAllowed:
    case ReasonCode::machineAllowedDotKept:
    case ReasonCode::actionTable:
        break;
    case ReasonCode::noRule:
        return "no rule applies";
    case ReasonCode::noDot:
        return "no dot is held";
    case ReasonCode::dotNamesNoMachine:
        return "the dot names no machine";
    case ReasonCode::allowListEmpty:
        return "the allow list is empty";
    case ReasonCode::noAllowedMachine:
        return "no allowed machine holds a dot";
    case ReasonCode::receiverNotStarted:
        return "the receiver is not started";
    case ReasonCode::networkErrorAllowed:
        return "network error, exception mode allows";
    case ReasonCode::networkErrorBlocked:
        return "network error, exception mode blocks";
    case ReasonCode::queryError:
        return "query error";
    case ReasonCode::brokenAnswer:
        return "broken answer to the query";
    case ReasonCode::malformedAnswer:
        return "malformed answer to the query";
    case ReasonCode::emptyAnswer:
        return "empty answer to the query";
    case ReasonCode::allForbidMode:
        return "all-forbid mode blocks";
    case ReasonCode::emergencyMode:
        return "emergency mode allows everything";
    case ReasonCode::disconnect:
        return "disconnect";
    case ReasonCode::afterDecisionMode:
        return "allow-after-decision mode lets it pass";
    }
    return {};
}

} // namespace mordhost
