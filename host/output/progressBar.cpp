#include "output/progressBar.h"

#include <algorithm>
#include <cstdint>
#include <string>

namespace mordhost {

namespace {

constexpr size_t barWidth = 40;
constexpr std::chrono::milliseconds betweenDrawings(100);

} // namespace

void ProgressBar::Advance(size_t done, Clock::time_point now) {
    if (!m_on || now < m_next) {
        return;
    }
    m_next = now + betweenDrawings;
    const size_t total = std::max<size_t>(m_total, 1);
    const size_t shown = std::min(done, total);
    const auto filled = static_cast<size_t>(static_cast<uint64_t>(barWidth) * shown / total);
    m_out << "\r[" << std::string(filled, '#') << std::string(barWidth - filled, '.') << "] "
          << static_cast<uint64_t>(100) * shown / total << "%  " << done << " of " << m_total << std::flush;
    m_drawn = true;
}

void ProgressBar::Clear() {
    if (m_drawn) {
        m_out << "\r\x1b[K" << std::flush;
        m_drawn = false;
    }
}

} // namespace mordhost
