// Presents decisions on the standard output.
#pragma once

#include <memory>
#include <ostream>
#include <string>

#include "decide/decision.h"
#include "decide/dotHost.h"
#include "output/statistics.h"
#include "output/table.h"
#include "policy/policy.h"

namespace mordhost {

// The contents of the summary.
struct Outcome {
    const Statistics& statistics;
    const DotHost::Account& calls;
    size_t dotsLeft = 0;
    bool timesIncludeLogging = false; // the measured times include the writing of log records
};

class Presenter {
public:
    virtual ~Presenter() = default;

    // Writes the head, a decision, and the summary, to a stream whose state tells whether that succeeded.
    virtual void Begin() = 0;
    virtual void Show(const Decision& decision) = 0;
    virtual void End(const Outcome& outcome) = 0;
};

// Writes a table for people and a short summary. Does not own `out` and `policy`.
std::unique_ptr<Presenter> MakeTablePresenter(std::ostream& out, const Policy& policy, const std::string& title,
                                              const Widths& widths, bool colour);

// Writes a line with a JSON object for each decision and one for the summary. Does not own `out` and `policy`.
std::unique_ptr<Presenter> MakeJsonPresenter(std::ostream& out, const Policy& policy);

} // namespace mordhost
