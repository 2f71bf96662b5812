// From event to decision.
#pragma once

#include "decide/decision.h"
#include "library/dotHost.h"
#include "library/receiver.h"
#include "library/recordLog.h"
#include "library/reportSink.h"
#include "policy/policy.h"

namespace mordhost {

// Gathers the rules of an event, asks the library, and gathers what it did and said. Owns nothing that it is given.
class Decider {
public:
    Decider(const Policy& policy, Receiver& receiver, DotHost& dots, ReportSink& sink, RecordLog& log)
        : m_policy(policy), m_receiver(receiver), m_dots(dots), m_sink(sink), m_log(log) {}

    Decision Decide(ConnectionEvent event);

private:
    std::optional<Failure> FailureFor(const ConnectionEvent& event) const;

    const Policy& m_policy;
    Receiver& m_receiver;
    DotHost& m_dots;
    ReportSink& m_sink;
    RecordLog& m_log;
};

} // namespace mordhost
