// The commands to record and to watch.
#include <memory>

#include <CLI/CLI.hpp>

#include "app/commandOptions.h"

namespace mordhost {

namespace {

void AddLiveOptions(CLI::App& command, LiveOptions& options) {
    command.add_option("--seconds", options.seconds, "Stop after N seconds instead of at an interruption")
        ->type_name("N")
        ->check(CLI::Range(1U, 31536000U));
    command
        .add_option_function<std::vector<std::string>>(
            "--flagged",
            [&options](const std::vector<std::string>& texts) {
                for (const std::string& text : texts) {
                    std::string reason;
                    const auto range = ParseAddressRange(text, reason);
                    if (!range) {
                        throw CLI::ValidationError("--flagged", reason);
                    }
                    options.flagged.push_back(*range);
                }
            },
            "Set the flag 0x10 in the events of remote ends in RANGE; may be repeated")
        ->type_name("RANGE")
        ->allow_extra_args(false);
}

void AddRecordCommand(CLI::App& app, Action& action) {
    CLI::App& command = *app.add_subcommand("record", "Write this machine's inbound connections as events");
    const auto options = std::make_shared<RecordOptions>();
    command.add_option("--out", options->out, "Write to FILE instead of the standard output")->type_name("FILE");
    AddLiveOptions(command, options->live);
    command.callback([options, &action] { action = [options] { Record(*options); }; });
}

void AddWatchCommand(CLI::App& app, Action& action) {
    CLI::App& command =
        *app.add_subcommand("watch", "Decide this machine's inbound connections as they come; enforces nothing");
    const auto options = std::make_shared<WatchOptions>();
    command.add_option("POLICY", options->policy, "The policy document")->required();
    AddRunOptions(command, options->run);
    AddLiveOptions(command, options->live);
    command.callback([options, &action] { action = [options] { Watch(*options); }; });
}

} // namespace

void AddLiveCommands(CLI::App& app, Action& action) {
    AddRecordCommand(app, action);
    AddWatchCommand(app, action);
}

} // namespace mordhost
