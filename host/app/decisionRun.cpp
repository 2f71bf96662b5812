#include "app/decisionRun.h"

#include <iostream>

#include "document/filePath.h"
#include "frame/values.h"
#include "output/boundedText.h"
#include "output/requireWritten.h"
#include "policy/modeNames.h"
#include "system/hostSystem.h"
#include "system/runError.h"

namespace mordhost {

namespace {

std::optional<OutputFile> OpenIfNamed(const std::string& name) {
    return name.empty() ? std::nullopt : std::optional<OutputFile>(std::in_place, name);
}

std::filesystem::path DirectoryOf(const RunOptions& options) {
    return options.libraries.empty() ? DefaultLibraryDirectory() : PathOf(options.libraries);
}

std::unique_ptr<Presenter> MakePresenter(const Policy& policy, const RunOptions& options, const std::string& title,
                                         const Widths& widths) {
    if (options.json) {
        return MakeJsonPresenter(std::cout, policy);
    }
    return MakeTablePresenter(std::cout, policy, title, widths, TakesColour(Stream::output));
}

std::string ModeText(std::optional<uint32_t> mode, uint32_t usual, const std::initializer_list<NamedValue>& names) {
    const uint32_t value = mode.value_or(usual);
    for (const NamedValue& known : names) {
        if (known.value == value) {
            return std::string(known.name);
        }
    }
    return std::to_string(value);
}

std::string Counted(size_t count, const std::string& noun) {
    return std::to_string(count) + ' ' + noun + (count == 1 ? "" : "s");
}

constexpr std::chrono::milliseconds betweenFlushes(50);
constexpr size_t widestMachineId = 64;

} // namespace

void AddRoles(FileRoles& roles, const Policy& policy, const RunOptions& options) {
    for (const PolicyFile& file : policy.files) {
        if (file.holdsDots) {
            roles.ReadsDots(file.what, file.name);
        } else {
            roles.Reads(file.what, file.name);
        }
    }
    for (const std::string_view name : {"ZelkBase", "Ferrocore", "mordRev"}) {
        roles.Reads("the library", Utf8Of(DirectoryOf(options) / LibraryFileName(name)));
    }
    roles.WritesStandardOutput();
    if (!options.reports.empty()) {
        roles.Writes("--reports", options.reports);
    }
    if (!options.log.empty()) {
        roles.Writes("--log", options.log);
    }
    if (!options.dots.empty()) {
        roles.Replaces("--dots", options.dots);
    }
    roles.WritesMessages();
}

std::string TitleOf(const std::string& policyName, const Policy& policy) {
    return policyName + ": machine id " + Printable(policy.machineId.value_or("from the machine"), widestMachineId) +
           ", defender mode " + ModeText(policy.defenderMode, MODE_ACTION_TABLE, defenderModes) + ", exception mode " +
           ModeText(policy.exceptionMode, EXCEPTION_BLOCK, exceptionModes) + ", " +
           Counted(policy.rules.size(), "rule") + ", " + Counted(policy.dots.size(), "dot");
}

DecisionRun::DecisionRun(const Policy& policy, const RunOptions& options, const std::string& title,
                         const Widths& widths)
    : m_policy(policy), m_reportFile(OpenIfNamed(options.reports)), m_logFile(OpenIfNamed(options.log)),
      m_logging(!options.noLog), m_store(policy.dots, options.dots), m_libraries(DirectoryOf(options)),
      m_log(m_libraries.Base(), m_logging), m_receiver(m_libraries.Receiver(), policy, m_dots, m_sink),
      m_decider(policy, m_receiver, m_dots, m_sink, m_log),
      m_presenter(MakePresenter(policy, options, Printable(title), widths)) {
    WrittenRecords ofTheStart;
    m_log.Take(ofTheStart);
    WriteLog(ofTheStart);
}

void DecisionRun::Run(const std::function<void()>& work) {
    try {
        m_presenter->Begin();
        RequireWritten(std::cout, standardOutputName);
        work();
    } catch (const std::exception&) {
        try {
            End();
        } catch (const std::exception&) { // what ended the run is to be told
        }
        throw;
    }
    End();
    RequireKeptDots();
}

void DecisionRun::Handle(ConnectionEvent&& event) {
    const Decision& decision = m_decider.Decide(std::move(event));
    m_statistics.Add(decision);
    m_presenter->Show(decision);
    RequireWritten(std::cout, standardOutputName);
    WriteLog(decision.log);
    if (m_reportFile) {
        for (const std::string& report : decision.reports) {
            m_reportFile->Write(report);
            m_reportFile->Write("\n"); // a report ends without one
        }
    }
}

void DecisionRun::WriteLog(const WrittenRecords& records) {
    if (m_logFile) {
        m_logFile->Write(records.text);
    }
}

void DecisionRun::Flush() {
    std::cout.flush();
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
    m_presenter->End({m_statistics, m_dots.Calls(), m_store.Size(), m_logging});
    Warn();
    Flush();
}

void DecisionRun::Warn() const {
    const DotHost::Account& calls = m_dots.Calls();
    const size_t kept = calls.answers - calls.givenBack;
    // In this one mode the library keeps the answers of queries; in all others it gives each of them back.
    const size_t toBeKept = m_policy.defenderMode == MODE_ALL_FORBID ? calls.answers : 0;
    if (kept != toBeKept || calls.strayReturns != 0) {
        std::cerr << "mordhost: warning: of " << calls.answers << " answers to queries the library kept " << kept
                  << ", not " << toBeKept << ", and gave back " << calls.strayReturns << " that it did not have\n";
    }
}

void DecisionRun::RequireKeptDots() const {
    if (!m_store.Trouble().empty()) {
        throw RunError("the dots that are left could not be kept: " + m_store.Trouble());
    }
}

} // namespace mordhost
