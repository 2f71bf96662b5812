#include "app/liveOptions.h"

namespace mordhost {

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

} // namespace mordhost
