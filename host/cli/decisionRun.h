// A run of decisions with output, from the loading of the libraries to the summary.
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "cli/runOptions.h"
#include "decide/decisionSession.h"
#include "output/heldOutput.h"
#include "output/outputFile.h"
#include "output/presenter.h"
#include "output/statistics.h"
#include "policy/memoryDotStore.h"

namespace mordhost {

class DecisionRun {
public:
    // Opens the output files, loads and configures the libraries. `widths` are those of the table. If `bar` is given,
    // it shares the terminal of the standard output: rows are held back between flushes. `policy` and `bar` must
    // outlive the run. Throws FileError, LoadError, DocumentError and RunError.
    DecisionRun(const std::string& policyName, const Policy& policy, const RunOptions& options, const Widths& widths,
                ProgressBar* bar = nullptr);

    // Writes the head of the output, calls `work`, which handles events, and writes the summary. Writes a warning to
    // the standard error if the library did not free the answers that it must. Throws what `work` throws, after the
    // summary, and RunError if output was lost or the remaining dots could not be written.
    void Run(const std::function<void()>& work);

    // Decides the event and writes the decision. Throws RunError if output was lost.
    void Handle(ConnectionEvent&& event);

    // Passes all output to the system. Throws RunError if output was lost.
    void Flush();

    // Flushes if the last flush was some time ago.
    void FlushNowAndThen();

private:
    void End();
    void RequireKeptDots() const;
    void WriteLog(const WrittenRecords& records);
    void Warn() const;

    const Policy& m_policy;
    std::optional<OutputFile> m_reportFile;
    std::optional<OutputFile> m_logFile;
    bool m_logging;
    MemoryDotStore m_store;
    DecisionSession m_session;
    Statistics m_statistics;
    HeldOutput m_output;
    std::unique_ptr<Presenter> m_presenter;
    std::chrono::steady_clock::time_point m_nextFlush = std::chrono::steady_clock::time_point::min();
};

} // namespace mordhost
