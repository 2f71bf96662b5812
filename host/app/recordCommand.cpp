// mordhost record
#include <iostream>
#include <optional>

#include "app/commands.h"
#include "frame/values.h"
#include "output/outputFile.h"
#include "system/runError.h"

namespace mordhost {

namespace {

void WriteToStandardOutput(const std::string& line) {
    std::cout << line << std::flush;
    if (!std::cout) {
        throw RunError("cannot write the standard output");
    }
}

} // namespace

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

} // namespace mordhost
