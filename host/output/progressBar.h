// A bar that shows how far a run has come.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <ostream>

namespace mordhost {

// Draws on the last line of a terminal, a few times a second, and only once the run has taken a while.
class ProgressBar {
public:
    using Clock = std::chrono::steady_clock;

    // `out` is not owned. Without `on` nothing is ever drawn. `total` is the work as a whole, in any unit.
    ProgressBar(std::ostream& out, bool on, uint64_t total, Clock::time_point now = Clock::now())
        : m_out(out), m_on(on), m_total(total), m_next(now + std::chrono::milliseconds(500)) {}
    ~ProgressBar() { Clear(); }
    ProgressBar(const ProgressBar&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;

    // Tells that `done` of the total is done, and how many events that are.
    void Advance(uint64_t done, size_t events, Clock::time_point now = Clock::now());

    // Takes the bar off the line, so that the line is free for something else.
    void Clear();

private:
    std::ostream& m_out;
    const bool m_on;
    const uint64_t m_total;
    Clock::time_point m_next; // not to be drawn before
    bool m_drawn = false;
};

} // namespace mordhost
