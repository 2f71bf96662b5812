#include "decide/decider.h"

#include <utility>

#include <rapidjson/reader.h>

#include "decide/logRecord.h"
#include "decide/reasonText.h"
#include "frame/values.h"

namespace mordhost {

namespace {

// Finds the process path in a report.
class PathFinder : public rapidjson::BaseReaderHandler<rapidjson::UTF8<>, PathFinder> {
public:
    bool Key(const char* text, rapidjson::SizeType size, bool) {
        m_isPath = std::string_view(text, size) == "proc_path";
        return true;
    }
    bool String(const char* text, rapidjson::SizeType size, bool) {
        if (m_isPath) {
            path.assign(text, size);
        }
        return !m_isPath; // stops the parser after the path
    }

    std::string path; // empty if the report has none

private:
    bool m_isPath = false;
};

std::string PathInReport(const std::string& report) {
    PathFinder finder;
    rapidjson::Reader reader;
    rapidjson::StringStream stream(report.c_str());
    reader.Parse<rapidjson::kParseIterativeFlag>(stream, finder);
    return finder.path;
}

} // namespace

std::string VerdictOf(const Decision& decision) {
    return decision.asked ? VerdictOfReply(decision.reply) : "no rule";
}

std::string VerdictOfReply(uint32_t reply) {
    switch (reply) {
    case REPLY_BLOCK:
        return "block";
    case REPLY_ALLOW:
        return "allow";
    case REPLY_ALLOW_FLAGGED:
        return "allow (flagged)";
    default:
        return "reply " + std::to_string(reply);
    }
}

const Decision& Decider::Decide(ConnectionEvent&& event) {
    Decision& decision = m_decision;
    decision.event = std::move(event);
    decision.process = decision.event.process;
    decision.rules = m_rules.Select(decision.event);
    decision.asked = !decision.rules.empty();
    decision.deletion.reset();
    decision.failure.reset();
    if (!decision.asked) {
        decision.reply = 0;
        decision.settled = false;
        decision.mode.reset();
        decision.reason = {ReasonCode::noRule, std::string(PhraseOf(ReasonCode::noRule)), {}, {}};
        decision.log.Clear();
        decision.reports.clear();
        decision.duration = {};
        return decision;
    }
    SetMode(decision.event);
    decision.mode = m_mode;
    m_dots.Prescribe(FailureFor(decision.event));
    const Answer answer = m_receiver.Decide(decision.event, decision.rules);
    decision.reply = answer.reply;
    decision.settled = answer.settled;
    decision.duration = answer.duration;
    decision.deletion = m_dots.TakeDeletion();
    decision.failure = m_dots.TakeFailure();
    m_sink.Take(decision.reports);
    m_log.Take(decision.log);
    FindReasonInRecords();
    // The path in the event has priority: it is of the time of the event. By now the process id may be reused.
    if (decision.process.empty() && !decision.reports.empty()) {
        decision.process = PathInReport(decision.reports.front());
    }
    return decision;
}

void Decider::FindReasonInRecords() {
    m_messages.clear();
    const std::string_view text = m_decision.log.text;
    size_t begin = 0;
    for (const size_t end : m_decision.log.ends) {
        if (const auto message = MessageOf(text.substr(begin, end - begin))) {
            m_messages.push_back(*message);
        }
        begin = end;
    }
    FindReason(m_messages, {m_policy.rules, m_decision.rules}, m_decision.reason);
}

void Decider::SetMode(const ConnectionEvent& event) {
    const std::optional<uint32_t> mode = m_modes.ModeFor(event);
    if (mode && mode != m_mode) {
        m_receiver.SetDefenderMode(*mode);
        m_mode = mode;
    }
    m_dots.ExpectKeptAnswers(m_mode == MODE_ALL_FORBID);
}

std::optional<Failure> Decider::FailureFor(const ConnectionEvent& event) const {
    if (m_dotsDown) {
        return m_dotsDown;
    }
    const auto failure = m_policy.failures.find(event.name);
    return failure == m_policy.failures.end() ? std::nullopt : std::optional(failure->second.failure);
}

} // namespace mordhost
