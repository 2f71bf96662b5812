// The options, and the command to replay. The library that reads them costs much time to compile: these files alone
// include it.
#include "app/commandLine.h"

#include <algorithm>
#include <iostream>
#include <memory>

#include <CLI/CLI.hpp>

#include "app/commandOptions.h"
#include "app/exitCode.h"

namespace mordhost {

namespace {

void AddReplayCommand(CLI::App& app, Action& action) {
    CLI::App& command = *app.add_subcommand("replay", "Decide recorded connection events under a policy");
    const auto options = std::make_shared<ReplayOptions>();
    command.add_option("POLICY", options->policy, "The policy document")->required();
    command.add_option("EVENTS", options->events, "The events, one a line; - reads the standard input")->required();
    AddRunOptions(command, options->run);
    command
        .add_option("--programs", options->programs,
                    "Start the policy's programs from DIR instead of from beside mordhost")
        ->type_name("DIR");
    command.callback([options, &action] { action = [options] { Replay(*options); }; });
}

} // namespace

void AddRunOptions(CLI::App& command, RunOptions& options) {
    command.add_flag("--json", options.json, "Write one JSON object a line instead of the table");
    command.add_option("--reports", options.reports, "Write the library's reports to FILE, as delivered")
        ->type_name("FILE");
    CLI::Option* const log =
        command.add_option("--log", options.log, "Write the library's log records to FILE")->type_name("FILE");
    command.add_flag("--no-log", options.noLog, "Let the library write no records: faster, and no reasons are shown")
        ->excludes(log);
    command
        .add_option("--dots", options.dots, "Keep the dots that are left in FILE, rewritten whenever one is deleted")
        ->type_name("FILE");
    command
        .add_option("--libraries", options.libraries,
                    "Load ZelkBase, Ferrocore and mordRev from DIR instead of from beside mordhost")
        ->type_name("DIR");
}

Action ReadCommandLine(std::vector<std::string> arguments, int& code) {
    CLI::App app("The reference host of mordRev: decides connection events as an agent does, and shows why.",
                 "mordhost");
    app.set_version_flag("--version", std::string("mordhost ") + MORDHOST_VERSION);
    app.require_subcommand(1);
    app.allow_windows_style_options(false); // a path may begin with a slash
    Action action;
    AddReplayCommand(app, action);
    AddLiveCommands(app, action);
    std::reverse(arguments.begin(), arguments.end()); // CLI11 takes them off the back
    try {
        app.parse(std::move(arguments));
        code = EXIT_DONE;
    } catch (const CLI::ParseError& error) {
        const int refusal = app.exit(error, std::cout, std::cerr);
        code = refusal == static_cast<int>(CLI::ExitCodes::Success) ? EXIT_DONE : EXIT_BAD_ARGUMENTS;
    }
    return action;
}

} // namespace mordhost
