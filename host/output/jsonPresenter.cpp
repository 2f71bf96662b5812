#include <string_view>

#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include "output/presenter.h"

namespace mordhost {

namespace {

// Writes the members of an object.
class MemberWriter {
public:
    explicit MemberWriter(rapidjson::StringBuffer& out) : m_writer(out) {}

    void Begin() { m_writer.StartObject(); }
    void BeginIn(std::string_view name) {
        Name(name);
        Begin();
    }
    void End() { m_writer.EndObject(); }

    void Text(std::string_view name, std::string_view value) {
        Name(name);
        m_writer.String(value.data(), static_cast<rapidjson::SizeType>(value.size()));
    }
    void Number(std::string_view name, int64_t value) {
        Name(name);
        m_writer.Int64(value);
    }
    void Truth(std::string_view name, bool value) {
        Name(name);
        m_writer.Bool(value);
    }
    void Null(std::string_view name) {
        Name(name);
        m_writer.Null();
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

    void BeginList(std::string_view name) {
        Name(name);
        m_writer.StartArray();
    }
    void EndList() { m_writer.EndArray(); }

private:
    void Name(std::string_view name) { m_writer.Key(name.data(), static_cast<rapidjson::SizeType>(name.size())); }

    rapidjson::Writer<rapidjson::StringBuffer> m_writer;
};

void WriteDecision(MemberWriter& line, const Decision& decision, const Policy& policy) {
    const ConnectionEvent& event = decision.event;
    line.Begin();
    line.Number("line", static_cast<int64_t>(event.line));
    line.TextOrNull("time", event.time);
    line.TextOrNull("name", event.name);
    line.NumberOrNull("flags", event.flags);
    line.NumberOrNull("pid", event.pid);
    line.TextOrNull("process", decision.process);
    line.TextOrNull("remote_addr_ip", event.remoteAddress ? std::string_view(*event.remoteAddress) : "");
    line.NumberOrNull("remote_addr_port", event.remotePort);
    line.TextOrNull("local_addr_ip", event.localAddress ? std::string_view(*event.localAddress) : "");
    line.NumberOrNull("local_addr_port", event.localPort);
    line.NumberOrNull("net_drv", event.netDrv);
    line.BeginList("rules");
    for (const size_t place : decision.rules) {
        line.Begin();
        line.Text("guid", policy.rules[place].guid);
        line.Text("type", policy.rules[place].type);
        line.End();
    }
    line.EndList();
    line.Text("verdict", VerdictOf(decision));
    line.TextOrNull("why", decision.reason);
    if (decision.asked) {
        line.Number("reply", decision.reply);
        line.Truth("result", decision.settled);
    } else {
        line.Null("reply");
        line.Null("result");
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
    line.End();
}

void WriteSummary(MemberWriter& line, const Outcome& outcome) {
    line.Begin();
    line.BeginIn("summary");
    line.Number("events", static_cast<int64_t>(outcome.statistics.Events()));
    line.BeginIn("verdicts");
    for (const auto& [verdict, count] : outcome.statistics.Verdicts()) {
        line.Number(verdict, static_cast<int64_t>(count));
    }
    line.End();
    line.Number("queries", static_cast<int64_t>(outcome.calls.queries));
    line.Number("reports", static_cast<int64_t>(outcome.statistics.Reports()));
    line.Number("dots_deleted", static_cast<int64_t>(outcome.statistics.Deleted()));
    line.Number("dots_left", static_cast<int64_t>(outcome.dotsLeft));
    line.Number("median_ns", outcome.statistics.Percentile(50).count());
    line.Number("p99_ns", outcome.statistics.Percentile(99).count());
    line.Truth("times_include_logging", outcome.timesIncludeLogging);
    line.End();
    line.End();
}

class JsonPresenter final : public Presenter {
public:
    JsonPresenter(std::ostream& out, const Policy& policy) : m_out(out), m_policy(policy) {}

    void Begin() override {}
    void Show(const Decision& decision) override {
        MemberWriter line(m_line);
        WriteDecision(line, decision, m_policy);
        WriteLine();
    }
    void End(const Outcome& outcome) override {
        MemberWriter line(m_line);
        WriteSummary(line, outcome);
        WriteLine();
    }

private:
    void WriteLine() {
        m_line.Put('\n');
        m_out.write(m_line.GetString(), static_cast<std::streamsize>(m_line.GetSize()));
        m_line.Clear();
    }

    std::ostream& m_out;
    const Policy& m_policy;
    rapidjson::StringBuffer m_line; // that is being made; its memory is used again
};

} // namespace

std::unique_ptr<Presenter> MakeJsonPresenter(std::ostream& out, const Policy& policy) {
    return std::make_unique<JsonPresenter>(out, policy);
}

} // namespace mordhost
