// The progress bar of a run.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <ostream>

namespace mordhost {

// Draws on the last line of a terminal, a few times per second, when the run has taken half a second.
class ProgressBar {
public:
    using Clock = std::chrono::steady_clock;

    // `out` is not owned. If `on` is false, nothing is drawn. `total` is the total work in any unit.
    ProgressBar(std::ostream& out, bool on, uint64_t total, Clock::time_point now = Clock::now())
        : m_out(out), m_on(on), m_total(total), m_next(now + std::chrono::milliseconds(500)) {}
    ~ProgressBar() { Clear(); }
    ProgressBar(const ProgressBar&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;

    // Reports that `done` of the total is done, which are `events` events.
    void Advance(uint64_t done, size_t events, Clock::time_point now = Clock::now());

    // Removes the bar from the terminal.
    void Clear();

private:
    std::ostream& m_out;
    const bool m_on;
    const uint64_t m_total;
    Clock::time_point m_next; // the earliest time of the next drawing
    bool m_drawn = false;
};

} // namespace mordhost
