// mordhost replay POLICY EVENTS
#include <iostream>
#include <set>

#include "app/commands.h"
#include "app/eventSource.h"
#include "document/filePath.h"
#include "output/progressBar.h"
#include "policy/policyReader.h"
#include "policy/ruleSelection.h"
#include "programs/programs.h"
#include "system/hostSystem.h"
#include "system/stopRequest.h"

namespace mordhost {

namespace {

void RequireApart(const ReplayOptions& options, const Policy& policy, const Programs& programs) {
    FileRoles roles;
    if (options.events == EventSource::standardInput) {
        roles.ReadsStandardInput("the standard input");
    } else {
        roles.Reads("the events", options.events);
    }
    for (const auto& [name, file] : policy.programs) {
        roles.Reads("the program", Utf8Of(programs.FileOf({name, {}})));
    }
    AddRoles(roles, policy, options.run);
}

// The path of the event's process, as far as it is known before the library is asked.
std::string KnownProcess(const ConnectionEvent& event, const Programs& programs) {
    const std::string started = event.program ? Utf8Of(programs.FileOf(*event.program)) : std::string();
    return event.process.empty() ? started : event.process;
}

// Widths in which the first events fit. When one of their lines is refused, nothing has been decided yet.
Widths WidthsFor(EventSource& events, const Policy& policy, const Programs& programs) {
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

// Decides the events of a replay one after the other.
class Replaying {
public:
    Replaying(const Policy& policy, Programs& programs, EventSource& events, DecisionRun& run)
        : m_policy(policy), m_programs(programs), m_events(events), m_run(run) {}

    // To the end of the events, or to a request to stop.
    void DecideAll() {
        // Where the rows appear on a terminal themselves, they are the progress.
        const bool showBar = !m_events.IsLive() && IsTerminal(Stream::error) && !IsTerminal(Stream::output);
        ProgressBar bar(std::cerr, showBar, showBar ? m_events.Size() : 0);
        size_t count = 0;
        ConnectionEvent event;
        while (Next(event)) {
            Decide(event);
            ++count;
            if (showBar) {
                bar.Advance(m_events.Done(), count);
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
            m_run.Flush(); // its start may take a while
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
    Programs& m_programs;
    EventSource& m_events;
    DecisionRun& m_run;
    std::set<std::string> m_failed; // names of events that came, for which the policy prescribes a failure
};

} // namespace

void Replay(const ReplayOptions& options) {
    const Policy policy = ReadPolicy(options.policy);
    Programs programs(policy, options.programs.empty() ? OwnDirectory() : PathOf(options.programs));
    RequireApart(options, policy, programs);
    EventSource events(options.events);
    const Widths widths = WidthsFor(events, policy, programs);
    DecisionRun run(policy, options.run, TitleOf(options.policy, policy), widths);
    Replaying replaying(policy, programs, events, run);
    run.Run([&] { replaying.DecideAll(); });
    if (StopRequested()) {
        throw Stopped("interrupted by " + StopCause() + ": the events behind these are not decided");
    }
    replaying.WarnOfUnknownNames();
}

} // namespace mordhost
