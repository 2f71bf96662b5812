// A rehearsal on the standard output.
#pragma once

#include <memory>
#include <ostream>
#include <string>

#include "compare/rehearsal.h"
#include "output/format.h"

namespace mordhost {

class RehearsalOutput {
public:
    virtual ~RehearsalOutput() = default;

    // Write the head, an event whose verdict changes under a combination, and the summary to a stream, whose state
    // shows whether that succeeded.
    virtual void Begin() = 0;
    virtual void Show(const ConnectionEvent& event, const RehearsedEvent& rehearsed) = 0;
    virtual void End(const Rehearsal& rehearsal) = 0;
};

// Do not own their arguments. `title` is the first line for people.
std::unique_ptr<RehearsalOutput> MakeRehearsalText(std::ostream& out, const std::vector<Combination>& combinations,
                                                   const std::string& title);

// One JSON document, or one object per line with the summary as the last one.
std::unique_ptr<RehearsalOutput> MakeRehearsalJson(std::ostream& out, const std::vector<Combination>& combinations,
                                                   bool isLines);

} // namespace mordhost
