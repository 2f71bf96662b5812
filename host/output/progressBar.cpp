#include "output/progressBar.h"

#include <algorithm>

namespace mordhost {

namespace {

constexpr size_t barWidth = 40;
constexpr std::chrono::milliseconds betweenDrawings(100);

} // namespace

void ProgressBar::Advance(uint64_t done, size_t events, Clock::time_point now) {
    if (!m_on || now < m_next) {
        return;
    }
    m_next = now + betweenDrawings;
    const uint64_t total = std::max<uint64_t>(m_total, 1);
    const uint64_t shown = std::min(done, total);
    const auto filled = static_cast<size_t>(barWidth * shown / total);
    m_bar = "\r[" + std::string(filled, '#') + std::string(barWidth - filled, '.') + "] " +
            std::to_string(100 * shown / total) + "%  " + std::to_string(events) + " events";
    Draw();
}

void ProgressBar::Draw() {
    m_out << m_bar << std::flush;
    m_drawn = true;
}

void ProgressBar::Redraw() {
    if (m_on && !m_bar.empty()) {
        Draw();
    }
}

void ProgressBar::Finish() {
    Clear();
    m_on = false;
}

void ProgressBar::Clear() {
    if (m_drawn) {
        m_out << "\r\x1b[K" << std::flush;
        m_drawn = false;
    }
}

} // namespace mordhost
