#include "app/runOptions.h"

namespace mordhost {

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

} // namespace mordhost
