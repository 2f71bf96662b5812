#include "policy/ruleConditions.h"

#include <algorithm>

namespace mordhost {

namespace {

template <typename Range, typename Meets>
std::optional<size_t> FirstOf(const std::vector<Range>& ranges, Meets meets) {
    const auto found = std::find_if(ranges.begin(), ranges.end(), meets);
    return found == ranges.end() ? std::nullopt : std::optional(static_cast<size_t>(found - ranges.begin()));
}

} // namespace

bool RuleConditions::AllMet(const Rule& rule) {
    return (rule.localPorts.empty() || LocalPort(rule)) && (rule.localAddresses.empty() || LocalAddress(rule)) &&
           (rule.remoteAddresses.empty() || RemoteAddress(rule));
}

std::optional<size_t> RuleConditions::LocalPort(const Rule& rule) const {
    if (!m_event.localPort) {
        return std::nullopt;
    }
    const uint16_t port = *m_event.localPort;
    return FirstOf(rule.localPorts,
                   [port](const PortRange& range) { return range.first <= port && port <= range.last; });
}

std::optional<size_t> RuleConditions::LocalAddress(const Rule& rule) {
    return FirstMet(rule.localAddresses, m_event.localAddress, m_local);
}

std::optional<size_t> RuleConditions::RemoteAddress(const Rule& rule) {
    return FirstMet(rule.remoteAddresses, m_event.remoteAddress, m_remote);
}

std::optional<size_t> RuleConditions::FirstMet(const std::vector<AddressRange>& ranges,
                                               const std::optional<std::string>& text, Parsed& parsed) {
    if (ranges.empty()) {
        return std::nullopt;
    }
    if (!parsed) {
        parsed = ParseIpAddress(text.value_or(""));
    }
    const std::optional<IpAddress>& address = *parsed;
    return address ? FirstOf(ranges, [&address](const AddressRange& range) { return range.Contains(*address); })
                   : std::nullopt;
}

} // namespace mordhost
