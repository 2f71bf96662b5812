// A bar that shows how far a run has come.
#pragma once

#include <chrono>
#include <cstddef>
#include <ostream>

namespace mordhost {

// Draws on the last line of a terminal, a few times a second, and only once the run has taken a while.
class ProgressBar {
public:
    using Clock = std::chrono::steady_clock;

    // `out` is not owned. Without `on` nothing is ever drawn.
    ProgressBar(std::ostream& out, bool on, size_t total, Clock::time_point now = Clock::now())
        : m_out(out), m_on(on), m_total(total), m_next(now + std::chrono::milliseconds(500)) {}

    // Tells that `done` of all are done.
    void Advance(size_t done, Clock::time_point now = Clock::now());

    // Takes the bar off the line, so that the line is free for something else.
    void Clear();

private:
    std::ostream& m_out;
    const bool m_on;
    const size_t m_total;
    Clock::time_point m_next; // not to be drawn before
    bool m_drawn = false;
};

} // namespace mordhost
