// The progress bar of a run.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <ostream>
#include <string>

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

    bool IsOn() const { return m_on; }

    // Reports that `done` of the total is done, which are `events` events.
    void Advance(uint64_t done, size_t events, Clock::time_point now = Clock::now());

    // Removes the bar from the terminal.
    void Clear();

    // Draws the bar again after Clear, as it was. Does nothing if Advance has not drawn it yet, or after Finish.
    void Redraw();

    // Removes the bar and draws nothing from now on.
    void Finish();

private:
    void Draw();

    std::ostream& m_out;
    bool m_on;
    const uint64_t m_total;
    Clock::time_point m_next; // the earliest time of the next drawing
    std::string m_bar;        // as drawn last; empty before the first drawing
    bool m_drawn = false;
};

} // namespace mordhost
