// How decisions are shown on the standard output.
#pragma once

#include <memory>
#include <ostream>
#include <string>

#include "decide/decision.h"
#include "library/dotHost.h"
#include "output/statistics.h"
#include "output/table.h"
#include "policy/policy.h"

namespace mordhost {

// What the summary tells.
struct Outcome {
    const Statistics& statistics;
    const DotHost::Account& calls;
    size_t dotsLeft = 0;
    bool timesIncludeLogging = false; // the library was writing its records in the times that were taken
};

class Presenter {
public:
    virtual ~Presenter() = default;
    virtual void Begin() = 0;
    virtual void Show(const Decision& decision) = 0;
    virtual void End(const Outcome& outcome) = 0;
};

// A table for people, and a summary of a few lines. Neither `out` nor `policy` is owned.
std::unique_ptr<Presenter> MakeTablePresenter(std::ostream& out, const Policy& policy, const std::string& title,
                                              const Widths& widths, bool colour);

// The same for programs: a JSON object a line for each decision, and one for the summary.
std::unique_ptr<Presenter> MakeJsonPresenter(std::ostream& out, const Policy& policy);

} // namespace mordhost
