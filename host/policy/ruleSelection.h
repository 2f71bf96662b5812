// Selects the rules that apply to an event.
#pragma once

#include <unordered_map>
#include <vector>

#include "policy/connectionEvent.h"
#include "policy/policy.h"

namespace mordhost {

// A rule applies to an event that meets all its conditions. An event does not meet a condition on a value that it
// lacks.
//
// A policy may have thousands of rules, most of them for single ports. Those are indexed by port.
class RuleSelector {
public:
    // Does not own the rules, which must not change.
    explicit RuleSelector(const std::vector<Rule>& rules);

    // The indexes of the rules that apply, in ascending order; valid until the next call.
    const std::vector<size_t>& Select(const ConnectionEvent& event);

private:
    const std::vector<Rule>& m_rules;
    std::unordered_map<uint16_t, std::vector<size_t>> m_onPort; // indexes of the rules for single ports, by port
    std::vector<size_t> m_others;                               // indexes of the other rules
    std::vector<size_t> m_selected;
};

} // namespace mordhost
