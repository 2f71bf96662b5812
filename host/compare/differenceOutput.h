// The differences of two policies on the standard output.
#pragma once

#include <memory>
#include <ostream>
#include <string>

#include "compare/comparison.h"
#include "output/format.h"

namespace mordhost {

class DifferenceOutput {
public:
    virtual ~DifferenceOutput() = default;

    // Write the head, a difference, and the summary to a stream, whose state shows whether that succeeded.
    virtual void Begin() = 0;
    virtual void Show(const Difference& difference) = 0;
    virtual void End(const ComparisonFigures& figures) = 0;
};

// The titles of both policies, for people.
struct ComparedTitles {
    std::string before;
    std::string after;
};

// `out` is not owned.
std::unique_ptr<DifferenceOutput> MakeDifferenceText(std::ostream& out, const ComparedTitles& titles);

// One JSON document, or one object per line with the summary as the last one.
std::unique_ptr<DifferenceOutput> MakeDifferenceJson(std::ostream& out, bool isLines);

} // namespace mordhost
