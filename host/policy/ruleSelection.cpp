#include "policy/ruleSelection.h"

#include <algorithm>
#include <iterator>

namespace mordhost {

namespace {

// Tests an event against conditions. Parses each address only when the first condition needs it.
class Conditions {
public:
    explicit Conditions(const ConnectionEvent& event) : m_event(event) {}

    bool Meet(const Rule& rule) {
        return PortMeets(rule.localPorts) && Meets(rule.localAddresses, m_event.localAddress, m_local) &&
               Meets(rule.remoteAddresses, m_event.remoteAddress, m_remote);
    }

private:
    using Parsed = std::optional<std::optional<IpAddress>>;

    bool PortMeets(const std::vector<PortRange>& ranges) const {
        const std::optional<uint16_t> port = m_event.localPort;
        return ranges.empty() || (port && std::any_of(ranges.begin(), ranges.end(), [port](const PortRange& range) {
                                      return range.first <= *port && *port <= range.last;
                                  }));
    }

    static bool Meets(const std::vector<AddressRange>& ranges, const std::optional<std::string>& text, Parsed& parsed) {
        if (ranges.empty()) {
            return true;
        }
        if (!parsed) {
            parsed = ParseIpAddress(text.value_or(""));
        }
        const std::optional<IpAddress>& address = *parsed;
        return address && std::any_of(ranges.begin(), ranges.end(),
                                      [&address](const AddressRange& range) { return range.Contains(*address); });
    }

    const ConnectionEvent& m_event;
    Parsed m_local;
    Parsed m_remote;
};

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
    Conditions conditions(event);
    const auto select = [&](const std::vector<size_t>& places) {
        std::copy_if(places.begin(), places.end(), std::back_inserter(m_selected),
                     [&](size_t place) { return conditions.Meet(m_rules[place]); });
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
