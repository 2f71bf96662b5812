// Decides each event under every failure of the host and every mode of the library.
#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <optional>
#include <string_view>
#include <vector>

#include "compare/rehearsalDots.h"
#include "decide/dotHost.h"
#include "decide/libraries.h"
#include "decide/modeSchedule.h"
#include "decide/receiver.h"
#include "decide/recordLog.h"
#include "decide/reportSink.h"
#include "policy/ruleSelection.h"

namespace mordhost {

// What happens to the queries of a combination.
struct RehearsedFailure {
    std::string_view name;          // "none", "network-error", "query-error", "broken-answer", "no-dots"
    std::optional<Failure> failure; // how every query fails
    bool hasNoDots = false;         // every query is answered, with nothing
};

struct Combination {
    const RehearsedFailure* failure = nullptr;
    uint32_t defenderMode = 0;
    uint32_t exceptionMode = 0;
};

// Every failure with every defender mode and every exception mode.
std::vector<Combination> AllCombinations();

// The figures of a combination.
struct CombinationFigures {
    std::map<uint32_t, size_t> replies; // events by reply
    size_t changed = 0;                 // events whose verdict is not the usual one
};

// The verdicts of one event. The usual one is that of a replay of the policy, with the policy's modes and failures.
struct RehearsedEvent {
    bool asked = false;            // whether the library decided; it does not if no rule applies
    uint32_t usual = 0;            // the reply; valid only if `asked`, as is the next member
    std::vector<uint32_t> replies; // by combination
};

// At most one per process, because the library has one object. For use by one thread.
class Rehearsal {
public:
    // `policy` must outlive this. Throws LoadError, DocumentError and RunError.
    Rehearsal(const Policy& policy, const std::filesystem::path& libraries);

    const std::vector<Combination>& Combinations() const { return m_combinations; }

    // Decides the event. The result is valid until the next call.
    const RehearsedEvent& Decide(const ConnectionEvent& event);

    // By combination.
    const std::vector<CombinationFigures>& Figures() const { return m_figures; }
    size_t Events() const { return m_events; }
    size_t WithoutRule() const { return m_withoutRule; }

private:
    // Discards the reports.
    class NoReports final : public IReportSink {
    public:
        int32_t Report(int32_t, const char*, uint32_t) override { return 0; }
    };

    uint32_t DecideUsual(const ConnectionEvent& event, const std::vector<size_t>& rules);
    uint32_t DecideIn(const Combination& combination, size_t store, const ConnectionEvent& event,
                      const std::vector<size_t>& rules);
    void SetModes(uint32_t defenderMode, uint32_t exceptionMode);

    const Policy& m_policy;
    const std::vector<Combination> m_combinations;
    RuleSelector m_rules;
    const ModeSchedule m_modes;
    RehearsalDots m_dots; // of the usual decisions, then of each combination
    DotHost m_host;
    NoReports m_sink;
    Libraries m_libraries;
    RecordLog m_log;
    Receiver m_receiver;
    std::optional<uint32_t> m_defenderMode; // of the library; nullopt: not set here yet
    std::optional<uint32_t> m_exceptionMode;
    RehearsedEvent m_event;
    std::vector<CombinationFigures> m_figures;
    size_t m_events = 0;
    size_t m_withoutRule = 0;
};

} // namespace mordhost
