// A policy, the loaded library and a dot store, ready to decide events.
#pragma once

#include <filesystem>

#include "decide/decider.h"
#include "decide/libraries.h"
#include "policy/dotStore.h"

namespace mordhost {

struct SessionOptions {
    std::filesystem::path libraries;       // their directory
    bool logging = true;                   // if false, the library writes no log records and decisions have no reasons
    std::optional<Failure> dotsDown;       // every query fails so
    std::function<UtcTime()> now = UtcNow; // the clock for events without a time
};

// At most one per process. For use by one thread.
class DecisionSession {
public:
    // Loads, initialises and configures the libraries. `policy` and `store` must outlive the session. Throws LoadError,
    // DocumentError and RunError.
    DecisionSession(const Policy& policy, DotStore& store, const SessionOptions& options);

    // The version of the loaded library; empty if it has none.
    std::string LibraryVersion() const { return m_libraries.Version(); }

    // The log records of the initialisation.
    const WrittenRecords& StartRecords() const { return m_startRecords; }

    // Decides the event. The result is valid until the next call.
    const Decision& Decide(ConnectionEvent&& event) { return m_decider.Decide(std::move(event)); }

    // Replaces the allow list for the following events. Throws LoadError.
    void SetAllowList(const std::string& document) { m_receiver.SetAllowList(document); }

    // See DotHost.
    void DropKeptAnswers() { m_dots.DropKeptAnswers(); }

    // The library's calls to the host so far.
    const DotHost::Account& Calls() const { return m_dots.Calls(); }

private:
    DotHost m_dots;
    ReportSink m_sink;
    Libraries m_libraries;
    RecordLog m_log;
    Receiver m_receiver;
    Decider m_decider;
    WrittenRecords m_startRecords;
};

} // namespace mordhost
