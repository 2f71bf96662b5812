#include "cli/decisionRun.h"

#include <iostream>

#include "cli/hostVersion.h"
#include "frame/values.h"
#include "output/requireWritten.h"
#include "output/title.h"
#include "system/hostSystem.h"
#include "system/runError.h"

namespace mordhost {

namespace {

std::optional<OutputFile> OpenIfNamed(const std::string& name) {
    return name.empty() ? std::nullopt : std::optional<OutputFile>(std::in_place, name);
}

std::unique_ptr<Presenter> MakePresenter(std::ostream& out, const Policy& policy, const RunOptions& options,
                                         const TableStyle& style, const std::string& libraryVersion) {
    const RecordContext context{libraryVersion, std::string(hostVersion), !options.noDuration};
    if (options.format == OutputFormat::json) {
        return MakeJsonPresenter(out, policy, context);
    }
    if (options.format == OutputFormat::jsonl) {
        return MakeJsonLinesPresenter(out, policy, context);
    }
    return MakeTablePresenter(out, policy, style);
}

constexpr std::chrono::milliseconds betweenFlushes(50);

} // namespace

DecisionRun::DecisionRun(const std::string& policyName, const Policy& policy, const RunOptions& options,
                         const Widths& widths, ProgressBar* bar)
    : m_policy(policy), m_reportFile(OpenIfNamed(options.reports)), m_logFile(OpenIfNamed(options.log)),
      m_logging(!options.noLog), m_store(policy.dots, options.dots), m_session(policy, m_store, options.Session()),
      m_output(std::cout, bar),
      m_presenter(MakePresenter(m_output.Stream(), policy, options,
                                {TitleOf(policyName, policy), widths, TakesColour(Stream::output), !options.noDuration},
                                m_session.LibraryVersion())) {
    WriteLog(m_session.StartRecords());
}

void DecisionRun::Run(const std::function<void()>& work) {
    if (m_policy.skippedParts > 0) {
        std::cerr << "mordhost: warning: the library skips " << m_policy.skippedParts
                  << (m_policy.skippedParts == 1 ? " part" : " parts")
                  << " of the policy's documents; 'mordhost check' lists them\n";
    }
    try {
        m_presenter->Begin();
        RequireWritten(std::cout, standardOutputName);
        work();
    } catch (const std::exception&) {
        try {
            End();
        } catch (const std::exception&) { // the first error is reported
        }
        throw;
    }
    End();
    RequireKeptDots();
}

void DecisionRun::Handle(ConnectionEvent&& event) {
    const Decision& decision = m_session.Decide(std::move(event));
    m_statistics.Add(decision);
    m_presenter->Show(decision);
    RequireWritten(std::cout, standardOutputName);
    WriteLog(decision.log);
    if (m_reportFile) {
        for (const std::string& report : decision.reports) {
            m_reportFile->Write(report);
            m_reportFile->Write("\n"); // reports have no line end
        }
    }
}

void DecisionRun::WriteLog(const WrittenRecords& records) {
    if (m_logFile) {
        m_logFile->Write(records.text);
    }
}

void DecisionRun::Flush() {
    m_output.Flush();
    RequireWritten(std::cout, standardOutputName);
    if (m_reportFile) {
        m_reportFile->Flush();
    }
    if (m_logFile) {
        m_logFile->Flush();
    }
}

void DecisionRun::FlushNowAndThen() {
    const auto now = std::chrono::steady_clock::now();
    if (now >= m_nextFlush) {
        Flush();
        m_nextFlush = now + betweenFlushes;
    }
}

void DecisionRun::End() {
    m_presenter->End({m_statistics, m_session.Calls(), m_store.Size(), m_logging});
    Warn();
    Flush();
}

void DecisionRun::Warn() const {
    const DotHost::Account& calls = m_session.Calls();
    const size_t kept = calls.answers - calls.givenBack;
    if (kept != calls.toBeKept || calls.strayReturns != 0) {
        std::cerr << "mordhost: warning: of " << calls.answers << " query answers the library kept " << kept
                  << " instead of " << calls.toBeKept << ", and it freed " << calls.strayReturns
                  << " that it did not own\n";
    }
}

void DecisionRun::RequireKeptDots() const {
    if (!m_store.Trouble().empty()) {
        throw RunError("the remaining dots could not be written: " + m_store.Trouble());
    }
}

} // namespace mordhost
