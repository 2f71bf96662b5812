// Presents decisions on the standard output.
#pragma once

#include <memory>
#include <ostream>
#include <string>

#include "decide/decision.h"
#include "decide/dotHost.h"
#include "output/decisionRecord.h"
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

    // Write the head, a decision, and the summary to a stream, whose state shows whether that succeeded.
    virtual void Begin() = 0;
    virtual void Show(const Decision& decision) = 0;
    virtual void End(const Outcome& outcome) = 0;
};

struct TableStyle {
    std::string title;
    Widths widths{};
    bool colour = false;
    bool durations = true; // whether the summary shows the time per decision
};

// Writes a table for people and a short summary. Does not own `out` and `policy`.
std::unique_ptr<Presenter> MakeTablePresenter(std::ostream& out, const Policy& policy, const TableStyle& style);

// Writes a line with the record of each decision and a line with the summary. Does not own `out` and `policy`.
std::unique_ptr<Presenter> MakeJsonLinesPresenter(std::ostream& out, const Policy& policy,
                                                  const RecordContext& context);

// Writes one JSON document with the records and the summary. Does not own `out` and `policy`.
std::unique_ptr<Presenter> MakeJsonPresenter(std::ostream& out, const Policy& policy, const RecordContext& context);

} // namespace mordhost
