#include "compare/rehearsal.h"

#include <array>

#include "frame/values.h"
#include "policy/modeNames.h"

namespace mordhost {

namespace {

constexpr std::array<RehearsedFailure, 5> failures = {{
    {"none", std::nullopt, false},
    {"network-error", Failure::networkError, false},
    {"query-error", Failure::queryError, false},
    {"broken-answer", Failure::brokenAnswer, false},
    {"no-dots", std::nullopt, true},
}};

} // namespace

std::vector<Combination> AllCombinations() {
    std::vector<Combination> all;
    for (const RehearsedFailure& failure : failures) {
        for (const NamedValue& defenderMode : defenderModes) {
            for (const NamedValue& exceptionMode : exceptionModes) {
                all.push_back({&failure, defenderMode.value, exceptionMode.value});
            }
        }
    }
    return all;
}

Rehearsal::Rehearsal(const Policy& policy, const std::filesystem::path& libraries)
    : m_policy(policy), m_combinations(AllCombinations()), m_rules(policy.rules), m_modes(policy),
      m_dots(policy.dots, m_combinations.size() + 1), m_host(m_dots), m_libraries(libraries),
      m_log(m_libraries.Base(), false), m_receiver(m_libraries.Receiver(), policy, m_host, m_sink),
      m_figures(m_combinations.size()) {
    m_event.replies.resize(m_combinations.size());
}

const RehearsedEvent& Rehearsal::Decide(const ConnectionEvent& event) {
    const std::vector<size_t>& rules = m_rules.Select(event);
    ++m_events;
    m_event.asked = !rules.empty();
    if (!m_event.asked) {
        ++m_withoutRule;
        return m_event;
    }
    m_event.usual = DecideUsual(event, rules);
    for (size_t i = 0; i < m_combinations.size(); ++i) {
        const uint32_t reply = DecideIn(m_combinations[i], i + 1, event, rules);
        m_event.replies[i] = reply;
        ++m_figures[i].replies[reply];
        m_figures[i].changed += reply == m_event.usual ? 0 : 1;
    }
    m_host.DropKeptAnswers();
    return m_event;
}

uint32_t Rehearsal::DecideUsual(const ConnectionEvent& event, const std::vector<size_t>& rules) {
    const auto prescribed = m_policy.failures.find(event.name);
    m_host.Prescribe(prescribed == m_policy.failures.end() ? std::nullopt : std::optional(prescribed->second.failure));
    m_dots.Select(0, false);
    // Without a mode in the policy the library has its defaults.
    SetModes(m_modes.ModeFor(event).value_or(MODE_ACTION_TABLE), m_policy.exceptionMode.value_or(EXCEPTION_BLOCK));
    return m_receiver.Decide(event, rules).reply;
}

uint32_t Rehearsal::DecideIn(const Combination& combination, size_t store, const ConnectionEvent& event,
                             const std::vector<size_t>& rules) {
    m_host.Prescribe(combination.failure->failure);
    m_dots.Select(store, combination.failure->hasNoDots);
    SetModes(combination.defenderMode, combination.exceptionMode);
    return m_receiver.Decide(event, rules).reply;
}

void Rehearsal::SetModes(uint32_t defenderMode, uint32_t exceptionMode) {
    if (m_defenderMode != defenderMode) {
        m_receiver.SetDefenderMode(defenderMode);
        m_defenderMode = defenderMode;
    }
    if (m_exceptionMode != exceptionMode) {
        m_receiver.SetExceptionMode(exceptionMode);
        m_exceptionMode = exceptionMode;
    }
}

} // namespace mordhost
