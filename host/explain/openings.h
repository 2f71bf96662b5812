// The changes of a policy that would allow an event.
#pragma once

#include <vector>

#include "decide/decisionSession.h"
#include "explain/explanation.h"

namespace mordhost {

// Tries single changes on copies of the policy, each with a new session of the library, and returns those under which
// the library allows the event: an entry of the allow list for a machine that a dot names, a dot for a machine that is
// allowed, an action, a store that answers, another mode. Tries a few machines of each rule only.
//
// `dots` are those before the event was decided. There must be no other session meanwhile; a later one needs a policy
// that sets everything (SettingEverything). Throws LoadError, DocumentError and RunError.
std::vector<Opening> FindOpenings(const Policy& policy, const Explanation& explanation, const DotTable& dots,
                                  const SessionOptions& options);

} // namespace mordhost
