// Facts that come close to an allow.
#pragma once

#include <vector>

#include "explain/explanation.h"
#include "explain/policyIndex.h"

namespace mordhost {

// The near misses of an event that is blocked or to which no rule applies:
//
// - no-dot: the allow list has machines for a rule, and the rule has no dot
// - similar-guid: a dot exists for a guid that differs in case or blanks
// - not-allowed: a dot names machines that the allow list does not have under the key of the rule
// - other-key: the allow list has the machine of a dot under another key
// - similar-machine: the allow list has a machine that differs in case or blanks
// - condition: an event without a rule meets all conditions of a rule but one
//
// At most ten for each rule and each kind of fact, in the order of the rules.
std::vector<NearMiss> FindNearMisses(const Policy& policy, const PolicyIndex& index, const Explanation& explanation);

} // namespace mordhost
