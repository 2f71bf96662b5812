// A run of decisions under one policy, from the loading of the libraries to the summary.
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "app/fileRoles.h"
#include "decide/decider.h"
#include "dots/memoryDotStore.h"
#include "library/libraries.h"
#include "output/outputFile.h"
#include "output/presenter.h"

namespace mordhost {

struct RunOptions {
    std::string libraries; // their directory; empty: the default one
    std::string reports;   // file for the reports; empty: none
    std::string log;       // file for the log records; empty: none
    std::string dots;      // file for the dots that are left; empty: none
    bool json = false;
    bool noLog = false; // the library writes no records, so that the reasons stay empty
};

class DecisionRun {
public:
    // Opens the output files, loads and sets up everything. `title` names the run above the table, `widths` is for its
    // columns. Throws FileError, LoadError, DocumentError. The policy must outlive the run.
    DecisionRun(const Policy& policy, const RunOptions& options, const std::string& title, const Widths& widths);

    // Writes the head of the output, calls `work`, which handles events, and writes the summary; warnings go to the
    // standard error where the library did not keep its account with the host. Throws RunError when the dots that are
    // left could not be kept, and what `work` throws: behind the summary, if that can be written.
    void Run(const std::function<void()>& work);

    // Decides the event and writes what came of it. Throws RunError when output is lost.
    void Handle(ConnectionEvent&& event);

    // Hands all that was written to the system. Throws RunError.
    void Flush();

    // The same once a while has gone by since the last time, so that nobody waits long for what was decided.
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
    DotHost m_dots{m_store};
    ReportSink m_sink;
    Libraries m_libraries;
    RecordLog m_log;
    Receiver m_receiver;
    Decider m_decider;
    Statistics m_statistics;
    std::unique_ptr<Presenter> m_presenter;
    std::chrono::steady_clock::time_point m_nextFlush = std::chrono::steady_clock::time_point::min();
};

// Names what the run reads and writes. Throws FileError where one file is in the way of another.
void AddRoles(FileRoles& roles, const Policy& policy, const RunOptions& options);

// "office.json: machine id from the machine, defender mode action-table, exception mode block, 4 rules, 2 dots"
std::string TitleOf(const std::string& policyName, const Policy& policy);

} // namespace mordhost
