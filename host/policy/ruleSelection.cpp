#include "policy/ruleSelection.h"

#include <algorithm>

namespace mordhost {

namespace {

// The two ends of an event, read once for all rules.
struct Ends {
    std::optional<uint16_t> localPort;
    std::optional<IpAddress> local;
    std::optional<IpAddress> remote;

    explicit Ends(const ConnectionEvent& event)
        : localPort(event.localPort), local(ParseIpAddress(event.localAddress.value_or(""))),
          remote(ParseIpAddress(event.remoteAddress.value_or(""))) {}
};

bool PortMeets(const std::vector<PortRange>& ranges, std::optional<uint16_t> port) {
    return ranges.empty() || (port && std::any_of(ranges.begin(), ranges.end(), [port](const PortRange& range) {
                                  return range.first <= *port && *port <= range.last;
                              }));
}

bool AddressMeets(const std::vector<AddressRange>& ranges, const std::optional<IpAddress>& address) {
    return ranges.empty() || (address && std::any_of(ranges.begin(), ranges.end(), [&](const AddressRange& range) {
                                  return range.Contains(*address);
                              }));
}

bool Meets(const Rule& rule, const Ends& ends) {
    return PortMeets(rule.localPorts, ends.localPort) && AddressMeets(rule.localAddresses, ends.local) &&
           AddressMeets(rule.remoteAddresses, ends.remote);
}

} // namespace

bool Applies(const Rule& rule, const ConnectionEvent& event) {
    return Meets(rule, Ends(event));
}

std::vector<size_t> SelectRules(const std::vector<Rule>& rules, const ConnectionEvent& event) {
    const Ends ends(event);
    std::vector<size_t> selected;
    for (size_t i = 0; i < rules.size(); ++i) {
        if (Meets(rules[i], ends)) {
            selected.push_back(i);
        }
    }
    return selected;
}

} // namespace mordhost
