// Compares two policies over a recording.
#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "compare/dotDivergence.h"
#include "compare/policySide.h"

namespace mordhost {

// A deletion under one policy only that a difference follows from: under that policy the library found no dot for the
// rule, and the other policy still has the dot.
struct Cause {
    std::string guid;
    LoneDeletion deletion;
};

// An event whose verdict or reason differs. Refers to the results of the sides.
struct Difference {
    const ConnectionEvent& event;
    const Brief& before;
    const Brief& after;
    const Detail& beforeDetail;
    const Detail& afterDetail;
    std::vector<Cause> causes;

    bool HasOtherVerdict() const { return before.verdict != after.verdict; }
};

struct ComparisonFigures {
    size_t events = 0;
    size_t verdictChanges = 0;
    size_t reasonChanges = 0;                                     // with the same verdict
    size_t following = 0;                                         // differences with a cause
    std::map<std::pair<std::string, std::string>, size_t> matrix; // events by both verdicts
};

class Comparison {
public:
    // Does not own its arguments. `dots` are those that each policy begins with.
    Comparison(PolicySide& before, const DotTable& dotsBefore, PolicySide& after, const DotTable& dotsAfter)
        : m_before(before), m_after(after), m_divergence(dotsBefore, dotsAfter) {}

    // Decides the same events under both policies and calls `show` for each difference in their order. The events may
    // differ in process ids only. Throws what the sides and `show` throw.
    void Decide(const EventBatch& before, const EventBatch& after, const std::function<void(const Difference&)>& show);

    const ComparisonFigures& Figures() const { return m_figures; }

private:
    std::vector<Cause> CausesOf(const Detail& before, const Detail& after) const;
    void Count(const Brief& before, const Brief& after);

    PolicySide& m_before;
    PolicySide& m_after;
    DotDivergence m_divergence;
    ComparisonFigures m_figures;
    std::vector<size_t> m_differing; // indexes in the batch
};

} // namespace mordhost
