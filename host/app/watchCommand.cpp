// mordhost watch POLICY
#include <iostream>
#include <memory>

#include "app/commands.h"
#include "app/liveOptions.h"
#include "app/runOptions.h"
#include "policy/policyReader.h"

namespace mordhost {

namespace {

struct WatchOptions {
    std::string policy;
    RunOptions run;
    LiveOptions live;
};

// Room for the ends and processes that are usual, since those to come are not known.
Widths LiveWidths() {
    Widths widths = UsualWidths();
    Widen(widths, {"", "127.100.100.100:40000", "127.100.100.100:8080", "python3.11", "web, smb", "", ""});
    return widths;
}

void Watch(const WatchOptions& options) {
    const Policy policy = ReadPolicy(options.policy);
    DecisionRun run(policy, options.run, TitleOf(options.policy, policy), LiveWidths());
    run.Begin();
    run.Flush();
    WatchConnections(options.live, [&run](ConnectionEvent event) {
        run.Handle(std::move(event));
        run.Flush();
    });
    run.End();
}

} // namespace

void AddWatchCommand(CLI::App& app, Action& action) {
    CLI::App& command =
        *app.add_subcommand("watch", "Decide this machine's inbound connections as they come; enforces nothing");
    const auto options = std::make_shared<WatchOptions>();
    command.add_option("POLICY", options->policy, "The policy document")->required();
    AddRunOptions(command, options->run);
    AddLiveOptions(command, options->live);
    command.callback([options, &action] { action = [options] { Watch(*options); }; });
}

} // namespace mordhost
