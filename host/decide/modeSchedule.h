// The defender mode that a policy requires at a time.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>

#include "policy/connectionEvent.h"
#include "policy/policy.h"

namespace mordhost {

class ModeSchedule {
public:
    // `now` is the clock for events without a time. `policy` must outlive this.
    explicit ModeSchedule(const Policy& policy, std::function<UtcTime()> now = UtcNow)
        : m_policy(policy), m_now(std::move(now)) {}

    // The mode for an event, by the event's own time if it has one. nullopt if the policy sets no mode.
    std::optional<uint32_t> ModeFor(const ConnectionEvent& event) const;

private:
    const Policy& m_policy;
    std::function<UtcTime()> m_now;
};

} // namespace mordhost
