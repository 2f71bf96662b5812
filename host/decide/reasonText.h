// The phrases of the reasons.
#pragma once

#include <string_view>

#include "decide/reasonCode.h"

namespace mordhost {

// The phrase of a code without variable parts. Empty for ReasonCode::unknown, and for the codes whose phrase names a
// machine or a rule type: machineAllowed, machineAllowedDotKept and actionTable.
std::string_view PhraseOf(ReasonCode code);

} // namespace mordhost
