#include "decide/modeSchedule.h"

#include "policy/timestamp.h"

namespace mordhost {

std::optional<uint32_t> ModeSchedule::ModeFor(const ConnectionEvent& event) const {
    const std::optional<ModeEnd>& end = m_policy.defenderModeEnd;
    if (!end) {
        return m_policy.defenderMode;
    }
    const auto ownTime = ParseTimestamp(event.time);
    return (ownTime ? *ownTime : m_now()) < end->until ? m_policy.defenderMode : end->then;
}

} // namespace mordhost
