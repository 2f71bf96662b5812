#include <string_view>

#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include "output/presenter.h"

namespace mordhost {

namespace {

using Writer = rapidjson::Writer<rapidjson::StringBuffer>;

void Key(Writer& json, std::string_view name) {
    json.Key(name.data(), static_cast<rapidjson::SizeType>(name.size()));
}

void Text(Writer& json, std::string_view name, std::string_view value) {
    Key(json, name);
    json.String(value.data(), static_cast<rapidjson::SizeType>(value.size()));
}

void Number(Writer& json, std::string_view name, int64_t value) {
    Key(json, name);
    json.Int64(value);
}

void Count(Writer& json, std::string_view name, size_t value) {
    Key(json, name);
    json.Uint64(value);
}

void Null(Writer& json, std::string_view name) {
    Key(json, name);
    json.Null();
}

void TextOrNull(Writer& json, std::string_view name, std::string_view value) {
    if (value.empty()) {
        Null(json, name);
    } else {
        Text(json, name, value);
    }
}

template <typename Held>
void NumberOrNull(Writer& json, std::string_view name, const std::optional<Held>& value) {
    if (value) {
        Number(json, name, *value);
    } else {
        Null(json, name);
    }
}

std::string_view ViewOf(const std::optional<std::string>& text) {
    return text ? std::string_view(*text) : std::string_view();
}

void WriteEvent(Writer& json, const ConnectionEvent& event, std::string_view process) {
    Count(json, "line", event.line);
    TextOrNull(json, "time", event.time);
    TextOrNull(json, "name", event.name);
    NumberOrNull(json, "flags", event.flags);
    NumberOrNull(json, "pid", event.pid);
    TextOrNull(json, "process", process);
    TextOrNull(json, "remote_addr_ip", ViewOf(event.remoteAddress));
    NumberOrNull(json, "remote_addr_port", event.remotePort);
    TextOrNull(json, "local_addr_ip", ViewOf(event.localAddress));
    NumberOrNull(json, "local_addr_port", event.localPort);
    NumberOrNull(json, "net_drv", event.netDrv);
}

void WriteRules(Writer& json, const std::vector<size_t>& rules, const Policy& policy) {
    Key(json, "rules");
    json.StartArray();
    for (const size_t rule : rules) {
        json.StartObject();
        Text(json, "guid", policy.rules[rule].guid);
        Text(json, "type", policy.rules[rule].type);
        json.EndObject();
    }
    json.EndArray();
}

void WriteDecision(Writer& json, const Decision& decision, const Policy& policy) {
    json.StartObject();
    WriteEvent(json, decision.event, decision.process);
    WriteRules(json, decision.rules, policy);
    Text(json, "verdict", VerdictOf(decision));
    TextOrNull(json, "why", decision.reason);
    if (decision.asked) {
        Number(json, "reply", decision.reply);
        Key(json, "result");
        json.Bool(decision.settled);
    } else {
        Null(json, "reply");
        Null(json, "result");
    }
    Count(json, "reports", decision.reports.size());
    if (decision.deletedDot) { // its guid may be empty
        Text(json, "deleted_dot", *decision.deletedDot);
    } else {
        Null(json, "deleted_dot");
    }
    if (decision.asked) {
        Number(json, "duration_ns", decision.duration.count());
    } else {
        Null(json, "duration_ns");
    }
    json.EndObject();
}

void WriteSummary(Writer& json, const Outcome& outcome) {
    const Statistics& statistics = outcome.statistics;
    json.StartObject();
    Key(json, "summary");
    json.StartObject();
    Count(json, "events", statistics.Events());
    Key(json, "verdicts");
    json.StartObject();
    for (const auto& [verdict, count] : statistics.Verdicts()) {
        Count(json, verdict, count);
    }
    json.EndObject();
    Count(json, "queries", outcome.calls.queries);
    Count(json, "reports", statistics.Reports());
    Count(json, "dots_deleted", statistics.Deleted());
    Count(json, "dots_left", outcome.dotsLeft);
    Number(json, "median_ns", statistics.Percentile(50).count());
    Number(json, "p99_ns", statistics.Percentile(99).count());
    Key(json, "times_include_logging");
    json.Bool(outcome.timesIncludeLogging);
    json.EndObject();
    json.EndObject();
}

class JsonPresenter final : public Presenter {
public:
    JsonPresenter(std::ostream& out, const Policy& policy) : m_out(out), m_policy(policy) {}

    void Begin() override {}
    void Show(const Decision& decision) override {
        WriteDecision(StartLine(), decision, m_policy);
        EndLine();
    }
    void End(const Outcome& outcome) override {
        WriteSummary(StartLine(), outcome);
        EndLine();
    }

private:
    Writer& StartLine() {
        m_line.Clear();
        m_json.Reset(m_line);
        return m_json;
    }
    void EndLine() {
        m_line.Put('\n');
        m_out.write(m_line.GetString(), static_cast<std::streamsize>(m_line.GetSize()));
    }

    std::ostream& m_out;
    const Policy& m_policy;
    // Members, to reuse their memory.
    rapidjson::StringBuffer m_line;
    Writer m_json;
};

} // namespace

std::unique_ptr<Presenter> MakeJsonPresenter(std::ostream& out, const Policy& policy) {
    return std::make_unique<JsonPresenter>(out, policy);
}

} // namespace mordhost
