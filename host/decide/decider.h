// Decides events.
#pragma once

#include "decide/decision.h"
#include "decide/dotHost.h"
#include "decide/modeSchedule.h"
#include "decide/receiver.h"
#include "decide/recordLog.h"
#include "decide/reportSink.h"
#include "policy/policy.h"
#include "policy/ruleSelection.h"

namespace mordhost {

// Selects the rules for an event, calls the library and collects the results. Does not own its arguments. For use by
// one thread.
class Decider {
public:
    // If `dotsDown` is given, the query of every event fails so; otherwise those fail for which the policy prescribes
    // it.
    // `now` is the clock for events without a time.
    Decider(const Policy& policy, Receiver& receiver, DotHost& dots, ReportSink& sink, RecordLog& log,
            std::optional<Failure> dotsDown = std::nullopt, std::function<UtcTime()> now = UtcNow)
        : m_policy(policy), m_rules(policy.rules), m_modes(policy, std::move(now)), m_mode(policy.defenderMode),
          m_receiver(receiver), m_dots(dots), m_sink(sink), m_log(log), m_dotsDown(dotsDown) {}

    // Decides the event. The result is valid until the next call.
    const Decision& Decide(ConnectionEvent&& event);

private:
    std::optional<Failure> FailureFor(const ConnectionEvent& event) const;
    void FindReasonInRecords();

    // Sets the mode that the policy requires for the event.
    void SetMode(const ConnectionEvent& event);

    const Policy& m_policy;
    RuleSelector m_rules;
    const ModeSchedule m_modes;
    std::optional<uint32_t> m_mode; // of the library; nullopt: its default
    Receiver& m_receiver;
    DotHost& m_dots;
    ReportSink& m_sink;
    RecordLog& m_log;
    const std::optional<Failure> m_dotsDown;
    // Members, to reuse their memory.
    Decision m_decision;
    std::vector<std::string_view> m_messages;
};

} // namespace mordhost
