// mordhost record
#include <iostream>
#include <optional>

#include "app/commands.h"
#include "app/fileRoles.h"
#include "frame/values.h"
#include "output/outputFile.h"
#include "output/requireWritten.h"

namespace mordhost {

namespace {

// What was recorded, told when the recording ends, however that is.
class Account {
public:
    Account() = default;
    ~Account() {
        std::cerr << "mordhost: recorded " << m_connections << " connections and " << m_disconnects << " disconnects\n";
    }
    Account(const Account&) = delete;
    Account& operator=(const Account&) = delete;

    void Add(const ConnectionEvent& event) {
        ++((event.flags.value_or(0) & EVENT_FLAG_DISCONNECT) != 0 ? m_disconnects : m_connections);
    }

private:
    size_t m_connections = 0;
    size_t m_disconnects = 0;
};

void WriteToStandardOutput(const std::string& line) {
    std::cout << line << std::flush;
    RequireWritten(std::cout, standardOutputName);
}

void RequireApart(const std::string& out) {
    FileRoles roles;
    if (!out.empty()) {
        roles.Writes("--out", out);
    }
    roles.WritesMessages();
}

} // namespace

void Record(const RecordOptions& options) {
    RequireApart(options.out);
    std::optional<OutputFile> file;
    if (!options.out.empty()) {
        file.emplace(options.out);
    }
    Account account;
    WatchConnections(options.live, [&](const ConnectionEvent& event) {
        const std::string line = EventLine(event) + '\n';
        if (file) {
            file->Write(line);
            file->Flush();
        } else {
            WriteToStandardOutput(line);
        }
        account.Add(event);
    });
}

} // namespace mordhost
