// Which rules apply to an event.
#pragma once

#include <vector>

#include "events/connectionEvent.h"
#include "policy/policy.h"

namespace mordhost {

// Whether the event meets every condition of the rule. A condition on a value that the event lacks is not met.
bool Applies(const Rule& rule, const ConnectionEvent& event);

// The places in `rules` of those that apply, in order.
std::vector<size_t> SelectRules(const std::vector<Rule>& rules, const ConnectionEvent& event);

} // namespace mordhost
