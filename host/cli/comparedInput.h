// What diff and rehearse share: the files of a run, and the loop over its events with output and progress bar.
#pragma once

#include <chrono>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "cli/batchReading.h"
#include "output/heldOutput.h"
#include "policy/policyPrograms.h"

namespace mordhost {

// Throws FileError if the standard output is a file that the run reads.
void RequireInputApart(const std::vector<const Policy*>& policies, const std::vector<const PolicyPrograms*>& programs,
                       const std::filesystem::path& libraries, const std::string& events);

class ComparedOutput {
public:
    // `events` must outlive this.
    explicit ComparedOutput(EventSource& events);

    std::ostream& Stream() { return m_held.Stream(); }

    // Passes all output to the system. Throws RunError if output was lost.
    void Flush();

    // Passes all events to `decide` in batches, then calls `end`, which writes the summary, also after an error.
    // Throws what `decide` throws, and Stopped after a stop request.
    void Run(const std::function<void(EventBatch&)>& decide, const std::function<void()>& end);

private:
    void FlushNowAndThen();

    EventSource& m_events;
    ProgressBar m_bar;
    HeldOutput m_held;
    std::chrono::steady_clock::time_point m_nextFlush = std::chrono::steady_clock::time_point::min();
};

} // namespace mordhost
