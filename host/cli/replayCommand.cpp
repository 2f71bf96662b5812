// mordhost replay POLICY EVENTS
#include <iostream>
#include <set>

#include "cli/commandList.h"
#include "cli/decisionRun.h"
#include "output/progressBar.h"
#include "policy/eventSource.h"
#include "policy/policyPrograms.h"
#include "policy/policyReader.h"
#include "policy/ruleSelection.h"
#include "system/filePath.h"
#include "system/hostSystem.h"
#include "system/stopRequest.h"

namespace mordhost {

namespace {

// The path of the process of an event, as far as it is known before the decision.
std::string KnownProcess(const ConnectionEvent& event, const PolicyPrograms& programs) {
    const std::string started = event.program ? Utf8Of(programs.FileOf(*event.program)) : std::string();
    return event.process.empty() ? started : event.process;
}

// The widths that the first events need. If one of their lines is invalid, no event has been decided yet.
Widths WidthsFor(EventSource& events, const Policy& policy, const PolicyPrograms& programs) {
    Widths widths = UsualWidths();
    RuleSelector rules(policy.rules);
    for (const ConnectionEvent& event : events.LookAhead()) {
        Decision decision;
        decision.rules = rules.Select(event);
        decision.process = KnownProcess(event, programs);
        decision.event = event;
        Widen(widths, decision, policy);
    }
    return widths;
}

// The loop of a replay.
class Replaying {
public:
    Replaying(const Policy& policy, PolicyPrograms& programs, EventSource& events, DecisionRun& run, ProgressBar& bar)
        : m_policy(policy), m_programs(programs), m_events(events), m_run(run), m_bar(bar) {}

    // Decides all events, or those before a stop request.
    void DecideAll() {
        const FinishedAtTheEnd finished{m_bar};
        size_t count = 0;
        ConnectionEvent event;
        while (Next(event)) {
            Decide(event);
            ++count;
            if (m_bar.IsOn()) {
                m_bar.Advance(m_events.Done(), count);
            }
        }
    }

    void WarnOfUnknownNames() const {
        for (const auto& [name, prescribed] : m_policy.failures) {
            if (!m_failed.contains(name)) {
                std::cerr << "mordhost: warning: " << prescribed.where.Text() << ": no event has the name \"" << name
                          << "\"\n";
            }
        }
    }

private:
    // Messages and the summary follow the bar, also after an error.
    struct FinishedAtTheEnd {
        ProgressBar& bar;
        ~FinishedAtTheEnd() { bar.Finish(); }
    };

    bool Next(ConnectionEvent& event) {
        try {
            return !StopRequested() && m_events.Next(event);
        } catch (const Stopped&) {
            return false;
        }
    }

    void Decide(ConnectionEvent& event) {
        if (m_policy.failures.contains(event.name)) {
            m_failed.insert(event.name);
        }
        if (event.program) {
            m_run.Flush(); // the start of the program may take some time
            m_programs.GiveId(event);
        }
        m_run.Handle(std::move(event));
        if (m_events.IsLive()) {
            m_run.Flush();
        } else {
            m_run.FlushNowAndThen();
        }
    }

    const Policy& m_policy;
    PolicyPrograms& m_programs;
    EventSource& m_events;
    DecisionRun& m_run;
    ProgressBar& m_bar;
    std::set<std::string> m_failed; // names of the events whose query failed as the policy requires
};

class ReplayCommand final : public Command {
public:
    std::string_view Name() const override { return "replay"; }

    void Declare(Arguments& arguments) override {
        arguments.Positional("POLICY", m_policy);
        arguments.Positional("EVENTS", m_events);
        m_run.Declare(arguments);
        arguments.Text("--programs", m_programs);
    }

    void Run() override {
        const Policy policy = ReadPolicy(m_policy);
        PolicyPrograms programs(policy, m_programs.empty() ? OwnDirectory() : PathOf(m_programs));
        RequireApart(policy, programs);
        EventSource events(m_events);
        const Widths widths = WidthsFor(events, policy, programs);
        const bool showBar = !events.IsLive() && IsTerminal(Stream::error);
        ProgressBar bar(std::cerr, showBar, showBar ? events.Size() : 0);
        const bool shared = showBar && IsTerminal(Stream::output);
        DecisionRun run(m_policy, policy, m_run, widths, shared ? &bar : nullptr);
        Replaying replaying(policy, programs, events, run, bar);
        run.Run([&] { replaying.DecideAll(); });
        if (StopRequested()) {
            throw Stopped("interrupted by " + StopCause() + ": the following events are not decided");
        }
        replaying.WarnOfUnknownNames();
    }

private:
    void RequireApart(const Policy& policy, const PolicyPrograms& programs) const {
        FileRoles roles;
        if (m_events == EventSource::standardInput) {
            roles.ReadsStandardInput("the standard input");
        } else {
            roles.Reads("the events", m_events);
        }
        for (const auto& [name, file] : policy.programs) {
            roles.Reads("the program", Utf8Of(programs.FileOf({name, {}})));
        }
        m_run.AddRoles(roles, policy);
    }

    std::string m_policy;
    std::string m_events;   // "-" for the standard input
    std::string m_programs; // the directory of the policy's programs; empty: that of mordhost
    RunOptions m_run;
};

} // namespace

std::unique_ptr<Command> MakeReplayCommand() {
    return std::make_unique<ReplayCommand>();
}

} // namespace mordhost
