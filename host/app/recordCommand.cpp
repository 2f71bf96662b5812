// mordhost record
#include <iostream>
#include <memory>
#include <optional>

#include "app/commands.h"
#include "app/liveOptions.h"
#include "mordRev/src/mordRevTypes.h"
#include "output/outputFile.h"
#include "system/runError.h"

namespace mordhost {

namespace {

struct RecordOptions {
    std::string out;
    LiveOptions live;
};

void WriteToStandardOutput(const std::string& line) {
    std::cout << line << std::flush;
    if (!std::cout) {
        throw RunError("cannot write the standard output");
    }
}

void Record(const RecordOptions& options) {
    std::optional<OutputFile> file;
    if (!options.out.empty()) {
        file.emplace(options.out);
    }
    size_t connections = 0;
    size_t disconnects = 0;
    WatchConnections(options.live, [&](const ConnectionEvent& event) {
        const std::string line = EventLine(event) + '\n';
        if (file) {
            file->Write(line);
            file->Flush();
        } else {
            WriteToStandardOutput(line);
        }
        ++((event.flags.value_or(0) & EVENT_FLAG_DISCONNECT) != 0 ? disconnects : connections);
    });
    std::cerr << "mordhost: recorded " << connections << " connections and " << disconnects << " disconnects\n";
}

} // namespace

void AddRecordCommand(CLI::App& app, Action& action) {
    CLI::App& command = *app.add_subcommand("record", "Write this machine's inbound connections as events");
    const auto options = std::make_shared<RecordOptions>();
    command.add_option("--out", options->out, "Write to FILE instead of the standard output")->type_name("FILE");
    AddLiveOptions(command, options->live);
    command.callback([options, &action] { action = [options] { Record(*options); }; });
}

} // namespace mordhost
