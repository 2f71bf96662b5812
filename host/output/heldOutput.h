// Output that shares a terminal with a progress bar.
#pragma once

#include <ostream>
#include <sstream>

#include "output/progressBar.h"

namespace mordhost {

// Collects rows and writes them at a flush: removes the bar, writes the rows, and draws the bar again. Without a bar it
// is the stream itself.
class HeldOutput {
public:
    // Does not own its arguments. `bar` may be null.
    HeldOutput(std::ostream& out, ProgressBar* bar) : m_out(out), m_bar(bar) {}

    // The stream to write to.
    std::ostream& Stream() { return m_bar == nullptr ? m_out : m_held; }

    // Passes all output to the system. The state of `out` shows whether that succeeded.
    void Flush();

private:
    std::ostream& m_out;
    ProgressBar* const m_bar;
    std::ostringstream m_held;
};

} // namespace mordhost
