#include "output/decisionRecord.h"

#include "output/jsonText.h"
#include "output/placeMembers.h"
#include "policy/modeNames.h"

namespace mordhost {

namespace {

std::string_view ViewOf(const std::optional<std::string>& text) {
    return text ? std::string_view(*text) : std::string_view();
}

// The members of a rule that do not depend on the decision.
std::string RuleMembers(const Policy& policy, size_t index) {
    std::string text;
    JsonMembers members(text);
    members.Text("guid", policy.rules[index].guid);
    members.Text("type", policy.rules[index].type);
    AppendPlace(members, policy.rules[index].place);
    return text;
}

// The digests and the versions.
std::string ConstantMembers(const Policy& policy, const RecordContext& context) {
    std::string text = ",\"policy\":[";
    for (const PolicyFile& file : policy.files) {
        text += text.back() == '[' ? "{" : ",{";
        JsonMembers members(text);
        members.Text("file", file.name);
        members.Text("sha256", file.sha256);
        text += '}';
    }
    text += "],\"versions\":{";
    JsonMembers versions(text);
    versions.TextOrNull("library", context.libraryVersion);
    versions.Text("host", context.hostVersion);
    text += '}';
    return text;
}

void AppendEvent(std::string& out, const ConnectionEvent& event) {
    out += '{';
    JsonMembers members(out);
    members.Count("line", event.line);
    members.TextOrNull("time", event.time);
    members.TextOrNull("name", event.name);
    members.NumberOrNull("flags", event.flags);
    members.NumberOrNull("pid", event.pid);
    if (event.program) { // its name may be empty
        members.Text("program", event.program->name);
    } else {
        members.Null("program");
    }
    members.TextOrNull("process", event.process);
    members.TextOrNull("remote_addr_ip", ViewOf(event.remoteAddress));
    members.NumberOrNull("remote_addr_port", event.remotePort);
    members.TextOrNull("local_addr_ip", ViewOf(event.localAddress));
    members.NumberOrNull("local_addr_port", event.localPort);
    members.NumberOrNull("net_drv", event.netDrv);
    out += '}';
}

void AppendReason(std::string& out, const Reason& reason) {
    out += '{';
    JsonMembers members(out);
    members.Text("code", NameOf(reason.code));
    members.TextOrNull("text", reason.text);
    if (reason.overruled) {
        members.Text("overruled", NameOf(*reason.overruled));
    } else {
        members.Null("overruled");
    }
    out += '}';
}

// The rule that matched, or null.
const RuleOutcome* FindMatch(const Reason& reason) {
    const bool matched = !reason.rules.empty() && reason.rules.back().code == ReasonCode::machineAllowed;
    return matched ? &reason.rules.back() : nullptr;
}

void AppendDot(std::string& out, const Decision& decision) {
    if (!decision.deletion) {
        out += "null";
        return;
    }
    const RuleOutcome* const match = FindMatch(decision.reason);
    out += '{';
    JsonMembers members(out);
    members.Text("guid", decision.deletion->guid);
    if (match != nullptr) { // its machine id may be empty
        members.Text("machine", match->machine);
    } else {
        members.Null("machine");
    }
    members.Flag("deleted", decision.deletion->done);
    out += '}';
}

} // namespace

DecisionRecords::DecisionRecords(const Policy& policy, const RecordContext& context)
    : m_policy(policy), m_allowEntries(policy), m_durations(context.durations),
      m_constants(ConstantMembers(policy, context)) {
    m_rules.reserve(policy.rules.size());
    for (size_t index = 0; index < policy.rules.size(); ++index) {
        m_rules.push_back(RuleMembers(policy, index));
    }
}

void DecisionRecords::Append(std::string& out, const Decision& decision) const {
    out += '{';
    JsonMembers members(out);
    members.TextOrNull("time", decision.event.time);
    AppendEvent(members.Name("event"), decision.event);
    AppendRules(members.Name("rules"), decision);
    members.Text("verdict", VerdictOf(decision));
    AppendReason(members.Name("reason"), decision.reason);
    AppendAllowedBy(members.Name("allowed_by"), decision);
    AppendDot(members.Name("dot"), decision);
    if (decision.failure) {
        members.Text("failure", NameOf(static_cast<uint32_t>(*decision.failure), failureNames));
    } else {
        members.Null("failure");
    }
    members.TextOrNull("process", decision.process);
    if (decision.asked) {
        members.Number("reply", decision.reply);
        members.Flag("result", decision.settled);
    } else {
        members.Null("reply");
        members.Null("result");
    }
    members.Count("reports", decision.reports.size());
    if (!m_durations) {
    } else if (decision.asked) {
        members.Number("duration_ns", decision.duration.count());
    } else {
        members.Null("duration_ns");
    }
    out += m_constants;
    out += '}';
}

void DecisionRecords::AppendRules(std::string& out, const Decision& decision) const {
    out += '[';
    auto outcome = decision.reason.rules.begin(); // in the order of the rules
    for (const size_t rule : decision.rules) {
        out += out.back() == '[' ? "{" : ",{";
        out += m_rules[rule];
        const bool looked = outcome != decision.reason.rules.end() && outcome->rule == rule;
        if (!looked) {
            out += R"(,"outcome":null,"machine":null})";
            continue;
        }
        out += R"(,"outcome":")";
        out += NameOf(outcome->code);
        out += R"(","machine":)";
        if (outcome->code == ReasonCode::machineAllowed) {
            AppendJsonString(out, outcome->machine);
        } else {
            out += "null";
        }
        out += '}';
        ++outcome;
    }
    out += ']';
}

void DecisionRecords::AppendAllowedBy(std::string& out, const Decision& decision) const {
    const RuleOutcome* const match = FindMatch(decision.reason);
    if (match == nullptr) {
        out += "null";
        return;
    }
    out += m_allowEntries.Find(m_policy.rules[match->rule], match->machine);
}

} // namespace mordhost
