#include "output/statistics.h"

#include <algorithm>
#include <limits>

namespace mordhost {

void Statistics::Add(const Decision& decision) {
    ++m_events;
    ++m_verdicts[VerdictOf(decision)];
    m_reports += decision.reports.size();
    m_deleted += HasDeletedDot(decision) ? 1 : 0;
    if (decision.asked) {
        constexpr int64_t longest = std::numeric_limits<uint32_t>::max();
        m_durations.push_back(static_cast<uint32_t>(std::clamp<int64_t>(decision.duration.count(), 0, longest)));
    }
}

std::chrono::nanoseconds Statistics::Percentile(unsigned percent) const {
    if (m_durations.empty()) {
        return {};
    }
    std::vector<uint32_t> sorted = m_durations;
    const auto rank =
        static_cast<size_t>((static_cast<uint64_t>(sorted.size()) * percent + 99) / 100); // counted from 1, rounded up
    const auto place = sorted.begin() + static_cast<std::ptrdiff_t>(std::max<size_t>(rank, 1) - 1);
    std::nth_element(sorted.begin(), place, sorted.end());
    return std::chrono::nanoseconds(*place);
}

} // namespace mordhost
