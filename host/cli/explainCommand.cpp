// mordhost explain POLICY [EVENTS]
#include <charconv>
#include <iostream>

#include "cli/commandList.h"
#include "cli/fileRoles.h"
#include "cli/hostVersion.h"
#include "decide/decisionSession.h"
#include "explain/explainer.h"
#include "explain/openings.h"
#include "frame/values.h"
#include "output/explanationJson.h"
#include "output/explanationText.h"
#include "output/format.h"
#include "output/progressBar.h"
#include "output/requireWritten.h"
#include "policy/endpointText.h"
#include "policy/eventSource.h"
#include "policy/memoryDotStore.h"
#include "policy/policyReader.h"
#include "policy/wholePolicy.h"
#include "system/fileError.h"
#include "system/filePath.h"
#include "system/hostSystem.h"
#include "system/stopRequest.h"

namespace mordhost {

namespace {

// Writes explanations in one of the formats.
class ExplanationOutput {
public:
    ExplanationOutput(const Policy& policy, OutputFormat format, const RecordContext& context, bool records)
        : m_policy(policy), m_format(format), m_withRecords(records), m_records(policy, context), m_texts(policy) {}

    void Begin() { Write(m_format == OutputFormat::json ? "[" : ""); }
    void End() { Write(m_format == OutputFormat::json ? "\n]\n" : ""); }

    // `openings` may be null.
    void Show(const Explanation& explanation, const std::vector<Opening>* openings) {
        m_text.clear();
        if (m_format == OutputFormat::text) {
            m_text += m_isFirst ? "" : "\n";
            m_texts.Append(m_text, explanation);
            if (openings != nullptr) {
                AppendOpenings(m_text, *openings);
            }
            if (m_withRecords) {
                AppendRecords(m_text, explanation.decision->log);
            }
        } else {
            if (m_format == OutputFormat::json) {
                m_text += m_isFirst ? "\n" : ",\n";
            }
            AppendExplanationJson(m_text, explanation, m_policy, m_records, {openings, m_withRecords});
            m_text += m_format == OutputFormat::jsonl ? "\n" : "";
        }
        m_isFirst = false;
        Write(m_text);
    }

private:
    static void Write(std::string_view text) {
        std::cout.write(text.data(), static_cast<std::streamsize>(text.size()));
        RequireWritten(std::cout, standardOutputName);
    }

    const Policy& m_policy;
    const OutputFormat m_format;
    const bool m_withRecords;
    const DecisionRecords m_records;
    ExplanationText m_texts;
    bool m_isFirst = true;
    std::string m_text; // a member, to reuse its memory
};

// Decides events one by one and explains those that are wanted.
class Explaining {
public:
    Explaining(const Policy& policy, const SessionOptions& options)
        : m_policy(policy), m_whole(SettingEverything(policy)), m_options(options), m_store(policy.dots),
          m_held(m_store), m_explainer(policy) {}

    const Decision& Decide(ConnectionEvent&& event) {
        m_held.Forget();
        return Session().Decide(std::move(event));
    }

    Explanation Explain(const Decision& decision) const { return m_explainer.Explain(decision, m_held); }

    // The changes that allow the decision's event. `dots` are those before it. Ends the session.
    std::vector<Opening> Openings(const Explanation& explanation, const DotTable& dots) {
        m_session.reset();
        return FindOpenings(m_policy, explanation, dots, m_options);
    }

    const DotTable& Dots() const { return m_store.Dots(); }

    std::string LibraryVersion() { return Session().LibraryVersion(); }

private:
    DecisionSession& Session() {
        if (!m_session) {
            m_session.emplace(m_whole, m_held, m_options);
        }
        return *m_session;
    }

    const Policy& m_policy;
    const Policy m_whole;
    const SessionOptions m_options;
    MemoryDotStore m_store;
    HeldDots m_held;
    const Explainer m_explainer;
    std::optional<DecisionSession> m_session;
};

class ExplainCommand final : public Command {
public:
    std::string_view Name() const override { return "explain"; }

    void Declare(Arguments& arguments) override {
        arguments.Positional("POLICY", m_policyName);
        arguments.Positional("EVENTS", m_events);
        arguments.Choice("--format", m_format);
        arguments.Text("--event", m_event);
        arguments.Text("--from", m_from);
        arguments.Text("--to", m_to);
        arguments.Number("--pid", m_pid);
        arguments.Number("--flags", m_flags);
        arguments.Flag("--records", m_records);
        arguments.Flag("--no-duration", m_noDuration);
        arguments.Choice("--dots-down", m_dotsDown);
        arguments.Text("--libraries", m_libraries);
    }

    void Run() override {
        RequireOneSource();
        const std::optional<ConnectionEvent> single =
            m_events ? std::nullopt : std::optional<ConnectionEvent>(SingleEvent());
        const Policy policy = ReadPolicy(m_policyName);
        SessionOptions options;
        options.libraries = m_libraries.empty() ? DefaultLibraryDirectory() : PathOf(m_libraries);
        options.dotsDown = m_dotsDown;
        Explaining explaining(policy, options);
        ExplanationOutput output(policy, m_format,
                                 {explaining.LibraryVersion(), std::string(hostVersion), !m_noDuration}, m_records);
        output.Begin();
        if (single) {
            Show(explaining, output, ConnectionEvent(*single), true);
        } else {
            ShowEvents(explaining, output);
        }
        output.End();
        std::cout.flush();
        RequireWritten(std::cout, standardOutputName);
    }

private:
    void RequireOneSource() const {
        const bool hasSingle = !m_from.empty() || !m_to.empty() || m_pid || m_flags;
        if (m_events && hasSingle) {
            throw FileError("--from, --to, --pid and --flags describe a single event and take no EVENTS");
        }
        if (!m_events && (m_from.empty() || m_to.empty())) {
            throw FileError("explain needs EVENTS, or a single event by --from and --to");
        }
        if (!m_events && !m_event.empty()) {
            throw FileError("--event selects one of EVENTS");
        }
    }

    ConnectionEvent SingleEvent() const {
        const std::optional<Endpoint> from = ParseEndpoint(m_from);
        if (!from) {
            throw FileError("--from: \"" + m_from + "\" is not an address such as 192.0.2.7 or [2001:db8::7]:4000");
        }
        const std::optional<Endpoint> to = ParseEndpoint(m_to);
        if (!to || !to->port) {
            throw FileError("--to: \"" + m_to + "\" is not an address with a port such as 192.0.2.1:445");
        }
        ConnectionEvent event;
        event.remoteAddress = from->address;
        event.remotePort = from->port;
        event.localAddress = to->address;
        event.localPort = to->port;
        event.pid = m_pid;
        event.flags = m_flags;
        return event;
    }

    // The line that --event names; nullopt if it is not a number.
    std::optional<size_t> WantedLine() const {
        size_t line = 0;
        const char* const end = m_event.data() + m_event.size();
        const auto [stop, error] = std::from_chars(m_event.data(), end, line);
        return error == std::errc() && stop == end ? std::optional(line) : std::nullopt;
    }

    void ShowEvents(Explaining& explaining, ExplanationOutput& output) {
        EventSource events(*m_events);
        const std::optional<size_t> line = WantedLine();
        const bool all = m_event.empty();
        const bool showBar = !events.IsLive() && IsTerminal(Stream::error) && !IsTerminal(Stream::output);
        ProgressBar bar(std::cerr, showBar, showBar ? events.Size() : 0);
        size_t count = 0;
        size_t explained = 0;
        ConnectionEvent event;
        while (!StopRequested() && events.Next(event)) {
            const bool wanted = all || (line ? event.line == *line : event.name == m_event);
            if (wanted) {
                Show(explaining, output, std::move(event), !all);
                ++explained;
            } else {
                explaining.Decide(std::move(event));
            }
            if (bar.IsOn()) {
                bar.Advance(events.Done(), ++count);
            }
            if (events.IsLive()) {
                std::cout.flush();
            }
            if (wanted && line) {
                break;
            }
        }
        bar.Finish();
        if (StopRequested()) {
            throw Stopped("interrupted by " + StopCause() + ": the following events are not explained");
        }
        if (explained == 0 && !all) {
            throw FileError(*m_events + (line ? ": there is no event in line " : ": there is no event with the name ") +
                            m_event);
        }
    }

    static void Show(Explaining& explaining, ExplanationOutput& output, ConnectionEvent&& event, bool tryChanges) {
        const DotTable before = tryChanges ? explaining.Dots() : DotTable();
        const Decision& decision = explaining.Decide(std::move(event));
        if (!tryChanges || !decision.asked || decision.reply != REPLY_BLOCK) {
            output.Show(explaining.Explain(decision), nullptr);
            return;
        }
        const Decision kept = decision; // finding the changes ends the session
        const Explanation explanation = explaining.Explain(kept);
        const std::vector<Opening> openings = explaining.Openings(explanation, before);
        output.Show(explanation, &openings);
    }

    std::string m_policyName;
    std::optional<std::string> m_events; // "-" for the standard input
    OutputFormat m_format = OutputFormat::text;
    std::string m_event;
    std::string m_from;
    std::string m_to;
    std::optional<unsigned> m_pid;
    std::optional<unsigned> m_flags;
    bool m_records = false;
    bool m_noDuration = false;
    std::optional<Failure> m_dotsDown;
    std::string m_libraries;
};

} // namespace

std::unique_ptr<Command> MakeExplainCommand() {
    return std::make_unique<ExplainCommand>();
}

} // namespace mordhost
