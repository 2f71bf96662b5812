// mordhost replay POLICY EVENTS
#include <cerrno>
#include <fstream>
#include <iostream>
#include <set>
#include <system_error>

#include "app/commands.h"
#include "document/filePath.h"
#include "events/eventReader.h"
#include "output/progressBar.h"
#include "policy/policyReader.h"
#include "policy/ruleSelection.h"
#include "programs/programs.h"
#include "system/hostSystem.h"
#include "system/runError.h"

namespace mordhost {

namespace {

constexpr auto standardInput = "-";
constexpr auto standardInputName = "standard input";

// What a first look at all events tells.
struct Preview {
    size_t count = 0;
    Widths widths = UsualWidths();
    std::set<std::string> failing; // names of events for which the policy prescribes a failure
};

std::ifstream OpenEvents(const std::string& name) {
    const std::filesystem::path path = PathOf(name);
    std::error_code error;
    if (std::filesystem::is_directory(path, error)) {
        throw FileError("cannot read " + name + ": it is a directory");
    }
    errno = 0;
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        throw FileError("cannot read " + name + ": " + std::generic_category().message(errno));
    }
    return file;
}

// The path of the event's process, as far as it is known before the library is asked.
std::string KnownProcess(const ConnectionEvent& event, const Programs& programs) {
    const std::string started = event.program ? Utf8Of(programs.FileOf(*event.program)) : std::string();
    return event.process.empty() ? started : event.process;
}

// Reads the whole file once, so that a bad line is refused before anything is decided.
Preview LookThrough(const std::string& name, const Policy& policy, const Programs& programs) {
    std::ifstream file = OpenEvents(name);
    EventReader reader(file, name);
    Preview preview;
    while (std::optional<ConnectionEvent> event = reader.Next()) {
        ++preview.count;
        if (policy.failures.contains(event->name)) {
            preview.failing.insert(event->name);
        }
        Decision decision;
        decision.rules = SelectRules(policy.rules, *event);
        decision.process = KnownProcess(*event, programs);
        decision.event = std::move(*event);
        Widen(preview.widths, decision, policy);
    }
    return preview;
}

void WarnOfUnknownNames(const Policy& policy, const std::set<std::string>& names) {
    for (const auto& [name, prescribed] : policy.failures) {
        if (!names.contains(name)) {
            std::cerr << "mordhost: warning: " << prescribed.where.Text() << ": no event has the name \"" << name
                      << "\"\n";
        }
    }
}

// Ends the run, also one that was broken off.
void End(DecisionRun& run) {
    run.End();
    if (Interrupted()) {
        throw RunError("interrupted: the events behind these are not decided");
    }
}

// Events that come down a pipe are decided as they come.
void ReplayStream(const ReplayOptions& options, const Policy& policy, Programs& programs) {
    EventReader reader(std::cin, standardInputName);
    HoldInterruption();
    DecisionRun run(policy, options.run, TitleOf(options.policy, policy), UsualWidths());
    run.Begin();
    for (auto event = reader.Next(); event && !Interrupted(); event = reader.Next()) {
        programs.GiveId(*event);
        run.Handle(std::move(*event));
        run.Flush();
    }
    End(run);
}

void ReplayFile(const ReplayOptions& options, const Policy& policy, Programs& programs) {
    const Preview preview = LookThrough(options.events, policy, programs);
    WarnOfUnknownNames(policy, preview.failing);
    std::ifstream file = OpenEvents(options.events);
    EventReader reader(file, options.events);
    HoldInterruption();
    DecisionRun run(policy, options.run, TitleOf(options.policy, policy), preview.widths);
    // Where the rows appear on a terminal themselves, they are the progress.
    const bool showBar = IsTerminal(Stream::error) && !IsTerminal(Stream::output);
    ProgressBar bar(std::cerr, showBar, preview.count);
    run.Begin();
    size_t done = 0;
    for (auto event = reader.Next(); event && !Interrupted(); event = reader.Next()) {
        programs.GiveId(*event);
        run.Handle(std::move(*event));
        bar.Advance(++done);
    }
    bar.Clear();
    End(run);
}

} // namespace

void Replay(const ReplayOptions& options) {
    const Policy policy = ReadPolicy(options.policy);
    Programs programs(policy, options.programs.empty() ? OwnDirectory() : PathOf(options.programs));
    if (options.events == standardInput) {
        ReplayStream(options, policy, programs);
    } else {
        ReplayFile(options, policy, programs);
    }
}

} // namespace mordhost
