#include "document/jsonText.h"
#include "output/presenter.h"

namespace mordhost {

namespace {

void TextOrNull(JsonLine& line, const char* name, const std::string& value) {
    if (value.empty()) {
        line.Null(name);
    } else {
        line.Text(name, value);
    }
}

template <typename Number>
void NumberOrNull(JsonLine& line, const char* name, const std::optional<Number>& value) {
    if (value) {
        line.Number(name, *value);
    } else {
        line.Null(name);
    }
}

std::string RulesJson(const std::vector<size_t>& places, const Policy& policy) {
    std::string json = "[";
    for (const size_t place : places) {
        JsonLine rule;
        rule.Text("guid", policy.rules[place].guid).Text("type", policy.rules[place].type);
        json += (json.size() > 1 ? "," : "") + rule.Take();
    }
    return json + ']';
}

std::string DecisionJson(const Decision& decision, const Policy& policy) {
    const ConnectionEvent& event = decision.event;
    JsonLine line;
    line.Number("line", static_cast<int64_t>(event.line));
    TextOrNull(line, "time", event.time);
    TextOrNull(line, "name", event.name);
    NumberOrNull(line, "flags", event.flags);
    NumberOrNull(line, "pid", event.pid);
    TextOrNull(line, "process", decision.process);
    TextOrNull(line, "remote_addr_ip", event.remoteAddress.value_or(""));
    NumberOrNull(line, "remote_addr_port", event.remotePort);
    TextOrNull(line, "local_addr_ip", event.localAddress.value_or(""));
    NumberOrNull(line, "local_addr_port", event.localPort);
    NumberOrNull(line, "net_drv", event.netDrv);
    line.Raw("rules", RulesJson(decision.rules, policy));
    line.Text("verdict", VerdictOf(decision));
    TextOrNull(line, "why", decision.reason);
    if (decision.asked) {
        line.Number("reply", decision.reply).Truth("result", decision.settled);
    } else {
        line.Null("reply").Null("result");
    }
    line.Number("reports", static_cast<int64_t>(decision.reports.size()));
    if (decision.deletedDot) { // the guid of a dot may be empty
        line.Text("deleted_dot", *decision.deletedDot);
    } else {
        line.Null("deleted_dot");
    }
    if (decision.asked) {
        line.Number("duration_ns", decision.duration.count());
    } else {
        line.Null("duration_ns");
    }
    return line.Take();
}

std::string SummaryJson(const Outcome& outcome) {
    JsonLine verdicts;
    for (const auto& [verdict, count] : outcome.statistics.Verdicts()) {
        verdicts.Number(verdict, static_cast<int64_t>(count));
    }
    JsonLine summary;
    summary.Number("events", static_cast<int64_t>(outcome.statistics.Events()))
        .Raw("verdicts", verdicts.Take())
        .Number("queries", static_cast<int64_t>(outcome.calls.queries))
        .Number("reports", static_cast<int64_t>(outcome.statistics.Reports()))
        .Number("dots_deleted", static_cast<int64_t>(outcome.statistics.Deleted()))
        .Number("dots_left", static_cast<int64_t>(outcome.dotsLeft))
        .Number("median_ns", outcome.statistics.Percentile(50).count())
        .Number("p99_ns", outcome.statistics.Percentile(99).count())
        .Truth("times_include_logging", outcome.timesIncludeLogging);
    JsonLine line;
    line.Raw("summary", summary.Take());
    return line.Take();
}

class JsonPresenter final : public Presenter {
public:
    JsonPresenter(std::ostream& out, const Policy& policy) : m_out(out), m_policy(policy) {}

    void Begin() override {}
    void Show(const Decision& decision) override { m_out << DecisionJson(decision, m_policy) << '\n'; }
    void End(const Outcome& outcome) override { m_out << SummaryJson(outcome) << '\n'; }

private:
    std::ostream& m_out;
    const Policy& m_policy;
};

} // namespace

std::unique_ptr<Presenter> MakeJsonPresenter(std::ostream& out, const Policy& policy) {
    return std::make_unique<JsonPresenter>(out, policy);
}

} // namespace mordhost
