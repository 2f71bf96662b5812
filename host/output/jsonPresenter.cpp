#include <algorithm>
#include <string_view>

#include "output/jsonText.h"
#include "output/presenter.h"

namespace mordhost {

namespace {

// {"events":…}
void AppendSummary(std::string& out, const Outcome& outcome, bool durations) {
    const Statistics& statistics = outcome.statistics;
    out += '{';
    JsonMembers members(out);
    members.Count("events", statistics.Events());
    members.Name("verdicts") += '{';
    JsonMembers verdicts(out);
    for (const auto& [verdict, count] : statistics.Verdicts()) {
        verdicts.Count(verdict, count);
    }
    out += '}';
    members.Count("queries", outcome.calls.queries);
    members.Count("reports", statistics.Reports());
    members.Count("dots_deleted", statistics.Deleted());
    members.Count("dots_left", outcome.dotsLeft);
    if (durations) {
        members.Number("median_ns", statistics.Percentile(50).count());
        members.Number("p99_ns", statistics.Percentile(99).count());
        members.Flag("times_include_logging", outcome.timesIncludeLogging);
    }
    out += '}';
}

// The base of both: collects the text of a call and writes it.
class JsonOutput : public Presenter {
public:
    JsonOutput(std::ostream& out, const Policy& policy, const RecordContext& context)
        : m_out(out), m_durations(context.durations), m_records(policy, context) {}

protected:
    void AppendRecord(const Decision& decision) { m_records.Append(m_text, decision); }
    void AppendOutcome(const Outcome& outcome) { AppendSummary(m_text, outcome, m_durations); }
    void Append(std::string_view text) { m_text += text; }

    void Write() {
        // The stream passes larger pieces to the system at once, past its buffer, which takes a system call per record.
        constexpr size_t buffered = 1000;
        for (std::string_view rest = m_text; !rest.empty(); rest.remove_prefix(std::min(buffered, rest.size()))) {
            m_out.write(rest.data(), static_cast<std::streamsize>(std::min(buffered, rest.size())));
        }
        m_text.clear();
    }

private:
    std::ostream& m_out;
    const bool m_durations;
    const DecisionRecords m_records;
    std::string m_text; // a member, to reuse its memory
};

class JsonLinesPresenter final : public JsonOutput {
public:
    using JsonOutput::JsonOutput;

    void Begin() override {}
    void Show(const Decision& decision) override {
        AppendRecord(decision);
        Append("\n");
        Write();
    }
    void End(const Outcome& outcome) override {
        Append("{\"summary\":");
        AppendOutcome(outcome);
        Append("}\n");
        Write();
    }
};

class JsonPresenter final : public JsonOutput {
public:
    using JsonOutput::JsonOutput;

    void Begin() override {
        Append("{\"decisions\":[");
        Write();
    }
    void Show(const Decision& decision) override {
        Append(m_isFirst ? "\n" : ",\n");
        m_isFirst = false;
        AppendRecord(decision);
        Write();
    }
    void End(const Outcome& outcome) override {
        Append("\n],\"summary\":");
        AppendOutcome(outcome);
        Append("}\n");
        Write();
    }

private:
    bool m_isFirst = true;
};

} // namespace

std::unique_ptr<Presenter> MakeJsonLinesPresenter(std::ostream& out, const Policy& policy,
                                                  const RecordContext& context) {
    return std::make_unique<JsonLinesPresenter>(out, policy, context);
}

std::unique_ptr<Presenter> MakeJsonPresenter(std::ostream& out, const Policy& policy, const RecordContext& context) {
    return std::make_unique<JsonPresenter>(out, policy, context);
}

} // namespace mordhost
