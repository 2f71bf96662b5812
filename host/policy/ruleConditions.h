// Tests an event against the conditions of rules.
#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "policy/connectionEvent.h"
#include "policy/policy.h"

namespace mordhost {

// An event does not meet a condition on a value that it lacks. Parses each address of the event once, when the first
// condition needs it.
class RuleConditions {
public:
    // Does not own the event.
    explicit RuleConditions(const ConnectionEvent& event) : m_event(event) {}

    // Whether the event meets all conditions of the rule.
    bool AllMet(const Rule& rule);

    // The first element of each list that the event meets; nullopt if it meets none, also for an empty list.
    std::optional<size_t> LocalPort(const Rule& rule) const;
    std::optional<size_t> LocalAddress(const Rule& rule);
    std::optional<size_t> RemoteAddress(const Rule& rule);

private:
    using Parsed = std::optional<std::optional<IpAddress>>;

    static std::optional<size_t> FirstMet(const std::vector<AddressRange>& ranges,
                                          const std::optional<std::string>& text, Parsed& parsed);

    const ConnectionEvent& m_event;
    Parsed m_local;
    Parsed m_remote;
};

} // namespace mordhost
