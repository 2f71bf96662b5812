// Finds the parts of a policy that can never take effect, and modes that let connections pass without an end.
#pragma once

#include "policy/policyReader.h"

namespace mordhost {

// Adds a warning to the findings of `reading` for each such part. The policy must have no error. `now` decides whether
// a mode has ended.
//
// The library looks at the rules of an event in their order, and the first rule with an allowed machine ends that. A
// rule without one never ends it, and each rule has separate dots. So no rule hides a later rule from a decision. Only
// the action table looks at the first rule of an event alone: an action has no effect if an earlier rule of another
// type applies to all connections of each rule of its type.
void CheckPolicy(PolicyReading& reading, UtcTime now = UtcNow());

} // namespace mordhost
