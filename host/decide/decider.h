// From event to decision.
#pragma once

#include "decide/decision.h"
#include "library/dotHost.h"
#include "library/receiver.h"
#include "library/recordLog.h"
#include "library/reportSink.h"
#include "policy/policy.h"
#include "policy/ruleSelection.h"

namespace mordhost {

// Gathers the rules of an event, asks the library, and gathers what it did and said. Owns nothing that it is given.
class Decider {
public:
    Decider(const Policy& policy, Receiver& receiver, DotHost& dots, ReportSink& sink, RecordLog& log)
        : m_policy(policy), m_rules(policy.rules), m_receiver(receiver), m_dots(dots), m_sink(sink), m_log(log) {}

    // What comes of the event; valid until the next one is decided.
    const Decision& Decide(ConnectionEvent&& event);

private:
    std::optional<Failure> FailureFor(const ConnectionEvent& event) const;
    std::string ReasonFromRecords(const std::string& matchedType);

    const Policy& m_policy;
    RuleSelector m_rules;
    Receiver& m_receiver;
    DotHost& m_dots;
    ReportSink& m_sink;
    RecordLog& m_log;
    // Kept from event to event for the memory that they hold.
    Decision m_decision;
    std::vector<std::string_view> m_messages;
};

} // namespace mordhost
