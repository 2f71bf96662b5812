#include <charconv>
#include <string_view>

#include "document/jsonText.h"
#include "output/presenter.h"

namespace mordhost {

namespace {

// An object that is written member by member to the end of a string. Names come with their punctuation, `,"name":`,
// which saves half of the work in a row.
class JsonRow {
public:
    explicit JsonRow(std::string& out) : m_out(out) {}

    void Raw(std::string_view json) { m_out += json; }

    void Text(std::string_view name, std::string_view value) {
        m_out += name;
        AppendJsonText(m_out, value);
    }
    void Number(std::string_view name, int64_t value) {
        m_out += name;
        char digits[24];
        m_out.append(digits, std::to_chars(std::begin(digits), std::end(digits), value).ptr);
    }
    void Truth(std::string_view name, bool value) {
        m_out += name;
        m_out += value ? "true" : "false";
    }
    void Null(std::string_view name) {
        m_out += name;
        m_out += "null";
    }
    void TextOrNull(std::string_view name, std::string_view value) {
        if (value.empty()) {
            Null(name);
        } else {
            Text(name, value);
        }
    }
    template <typename Word>
    void NumberOrNull(std::string_view name, const std::optional<Word>& value) {
        if (value) {
            Number(name, *value);
        } else {
            Null(name);
        }
    }

private:
    std::string& m_out;
};

std::string_view ViewOf(const std::optional<std::string>& text) {
    return text ? std::string_view(*text) : std::string_view();
}

void WriteDecision(JsonRow row, const Decision& decision, const Policy& policy) {
    const ConnectionEvent& event = decision.event;
    row.Number(R"({"line":)", static_cast<int64_t>(event.line));
    row.TextOrNull(R"(,"time":)", event.time);
    row.TextOrNull(R"(,"name":)", event.name);
    row.NumberOrNull(R"(,"flags":)", event.flags);
    row.NumberOrNull(R"(,"pid":)", event.pid);
    row.TextOrNull(R"(,"process":)", decision.process);
    row.TextOrNull(R"(,"remote_addr_ip":)", ViewOf(event.remoteAddress));
    row.NumberOrNull(R"(,"remote_addr_port":)", event.remotePort);
    row.TextOrNull(R"(,"local_addr_ip":)", ViewOf(event.localAddress));
    row.NumberOrNull(R"(,"local_addr_port":)", event.localPort);
    row.NumberOrNull(R"(,"net_drv":)", event.netDrv);
    row.Raw(R"(,"rules":[)");
    for (const size_t place : decision.rules) {
        row.Text(place == decision.rules.front() ? R"({"guid":)" : R"(,{"guid":)", policy.rules[place].guid);
        row.Text(R"(,"type":)", policy.rules[place].type);
        row.Raw("}");
    }
    row.Raw("]");
    row.Text(R"(,"verdict":)", VerdictOf(decision));
    row.TextOrNull(R"(,"why":)", decision.reason);
    if (decision.asked) {
        row.Number(R"(,"reply":)", decision.reply);
        row.Truth(R"(,"result":)", decision.settled);
    } else {
        row.Raw(R"(,"reply":null,"result":null)");
    }
    row.Number(R"(,"reports":)", static_cast<int64_t>(decision.reports.size()));
    if (decision.deletedDot) { // the guid of a dot may be empty
        row.Text(R"(,"deleted_dot":)", *decision.deletedDot);
    } else {
        row.Null(R"(,"deleted_dot":)");
    }
    if (decision.asked) {
        row.Number(R"(,"duration_ns":)", decision.duration.count());
    } else {
        row.Null(R"(,"duration_ns":)");
    }
    row.Raw("}\n");
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
    void Show(const Decision& decision) override {
        m_row.clear();
        WriteDecision(JsonRow(m_row), decision, m_policy);
        m_out.write(m_row.data(), static_cast<std::streamsize>(m_row.size()));
    }
    void End(const Outcome& outcome) override { m_out << SummaryJson(outcome) << '\n'; }

private:
    std::ostream& m_out;
    const Policy& m_policy;
    std::string m_row; // its room is used again
};

} // namespace

std::unique_ptr<Presenter> MakeJsonPresenter(std::ostream& out, const Policy& policy) {
    return std::make_unique<JsonPresenter>(out, policy);
}

} // namespace mordhost
