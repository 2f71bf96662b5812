// Which rules apply to an event.
#pragma once

#include <unordered_map>
#include <vector>

#include "events/connectionEvent.h"
#include "policy/policy.h"

namespace mordhost {

// Selects the rules of a policy that apply to an event, which are those whose conditions it meets, every one. A
// condition on a value that the event lacks is not met.
//
// A policy may have thousands of rules. Most name single ports, and are looked at for events on these alone.
class RuleSelector {
public:
    // Does not own the rules.
    explicit RuleSelector(const std::vector<Rule>& rules);

    // The places of those that apply, in order; valid until the next call.
    const std::vector<size_t>& Select(const ConnectionEvent& event);

private:
    const std::vector<Rule>& m_rules;
    std::unordered_map<uint16_t, std::vector<size_t>> m_onPort; // rules of nothing but single ports, by these
    std::vector<size_t> m_others;
    std::vector<size_t> m_selected;
};

} // namespace mordhost
