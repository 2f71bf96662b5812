#include "policy/ruleSelection.h"

#include <algorithm>
#include <iterator>

#include "policy/ruleConditions.h"

namespace mordhost {

namespace {

bool HasSinglePorts(const Rule& rule) {
    return !rule.localPorts.empty() && std::all_of(rule.localPorts.begin(), rule.localPorts.end(),
                                                   [](const PortRange& range) { return range.first == range.last; });
}

} // namespace

RuleSelector::RuleSelector(const std::vector<Rule>& rules) : m_rules(rules) {
    for (size_t place = 0; place < rules.size(); ++place) {
        if (!HasSinglePorts(rules[place])) {
            m_others.push_back(place);
            continue;
        }
        for (const PortRange& range : rules[place].localPorts) {
            std::vector<size_t>& onPort = m_onPort[range.first];
            if (onPort.empty() || onPort.back() != place) { // a rule may repeat a port
                onPort.push_back(place);
            }
        }
    }
}

const std::vector<size_t>& RuleSelector::Select(const ConnectionEvent& event) {
    m_selected.clear();
    RuleConditions conditions(event);
    const auto select = [&](const std::vector<size_t>& places) {
        std::copy_if(places.begin(), places.end(), std::back_inserter(m_selected),
                     [&](size_t place) { return conditions.AllMet(m_rules[place]); });
    };
    select(m_others);
    const auto onPort = event.localPort ? m_onPort.find(*event.localPort) : m_onPort.end();
    if (onPort != m_onPort.end()) {
        select(onPort->second);
    }
    std::sort(m_selected.begin(), m_selected.end());
    return m_selected;
}

} // namespace mordhost
