// mordhost record
#include <iostream>
#include <optional>

#include "cli/commandList.h"
#include "cli/fileRoles.h"
#include "cli/liveArguments.h"
#include "frame/values.h"
#include "output/eventText.h"
#include "output/outputFile.h"
#include "output/requireWritten.h"

namespace mordhost {

namespace {

// Reports the number of recorded events at the end of the recording, also after an error.
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

void WriteToStandardOutput(const std::string& text) {
    std::cout << text << std::flush;
    RequireWritten(std::cout, standardOutputName);
}

class RecordCommand final : public Command {
public:
    std::string_view Name() const override { return "record"; }

    void Declare(Arguments& arguments) override {
        arguments.Choice("--format", m_format);
        arguments.Text("--out", m_out);
        DeclareLiveOptions(arguments, m_live);
    }

    void Run() override {
        RequireApart();
        std::optional<OutputFile> file;
        if (!m_out.empty()) {
            file.emplace(m_out);
        }
        const auto write = [&file](const std::string& text) {
            if (file) {
                file->Write(text);
                file->Flush();
            } else {
                WriteToStandardOutput(text);
            }
        };
        Account account;
        EventText events(m_format);
        write(events.Begin());
        const std::optional<Stream> output = file ? std::nullopt : std::optional(Stream::output);
        WatchConnections(m_live, output, [&](const ConnectionEvent& event) {
            write(events.Of(event));
            account.Add(event);
        });
        write(events.End());
        RequireWholeTime(m_live);
    }

private:
    void RequireApart() const {
        FileRoles roles;
        if (!m_out.empty()) {
            roles.Writes("--out", m_out);
        }
        roles.WritesMessages();
    }

    OutputFormat m_format = OutputFormat::jsonl;
    std::string m_out;
    LiveOptions m_live;
};

} // namespace

std::unique_ptr<Command> MakeRecordCommand() {
    return std::make_unique<RecordCommand>();
}

} // namespace mordhost
