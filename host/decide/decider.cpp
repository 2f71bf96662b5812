#include "decide/decider.h"

#include <utility>

#include <rapidjson/document.h>

#include "decide/logRecord.h"
#include "decide/reason.h"
#include "frame/values.h"
#include "policy/ruleSelection.h"

namespace mordhost {

namespace {

// The process path that a report tells.
std::string PathInReport(const std::string& report) {
    rapidjson::Document document;
    document.Parse(report.c_str());
    if (document.HasParseError() || !document.IsObject()) {
        return {};
    }
    const auto path = document.FindMember("proc_path");
    return path == document.MemberEnd() || !path->value.IsString() ? std::string() : path->value.GetString();
}

} // namespace

std::string VerdictOf(const Decision& decision) {
    if (!decision.asked) {
        return "no rule";
    }
    switch (decision.reply) {
    case REPLY_BLOCK:
        return "block";
    case REPLY_ALLOW:
        return "allow";
    case REPLY_ALLOW_FLAGGED:
        return "allow (flagged)";
    default:
        return "reply " + std::to_string(decision.reply);
    }
}

Decision Decider::Decide(ConnectionEvent event) {
    Decision decision;
    decision.rules = SelectRules(m_policy.rules, event);
    decision.event = std::move(event);
    decision.process = decision.event.process;
    if (decision.rules.empty()) {
        decision.reason = "no rule applies";
        return decision;
    }
    m_dots.Prescribe(FailureFor(decision.event));
    const Answer answer = m_receiver.Decide(decision.event, decision.rules);
    decision.asked = true;
    decision.reply = answer.reply;
    decision.settled = answer.settled;
    decision.duration = answer.duration;
    const DotHost::Deletion deletion = m_dots.TakeDeletion();
    decision.deletedDot = deletion.done ? std::optional(deletion.guid) : std::nullopt;
    decision.reports = m_sink.Take();
    decision.log = m_log.Take();
    decision.reason = ReasonOf(ParseLogRecords(decision.log), deletion.type);
    // What was true at the time of the event goes before what is true now: the process may be gone, and its id taken.
    if (decision.process.empty() && !decision.reports.empty()) {
        decision.process = PathInReport(decision.reports.front());
    }
    return decision;
}

std::optional<Failure> Decider::FailureFor(const ConnectionEvent& event) const {
    const auto failure = m_policy.failures.find(event.name);
    return failure == m_policy.failures.end() ? std::nullopt : std::optional(failure->second.failure);
}

} // namespace mordhost
