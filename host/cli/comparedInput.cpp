#include "cli/comparedInput.h"

#include <iostream>

#include "cli/fileRoles.h"
#include "output/requireWritten.h"
#include "system/filePath.h"
#include "system/hostSystem.h"
#include "system/stopRequest.h"

namespace mordhost {

namespace {

bool ShowsBar(const EventSource& events) {
    return !events.IsLive() && IsTerminal(Stream::error);
}

} // namespace

void RequireInputApart(const std::vector<const Policy*>& policies, const std::vector<const PolicyPrograms*>& programs,
                       const std::filesystem::path& libraries, const std::string& events) {
    FileRoles roles;
    if (events == EventSource::standardInput) {
        roles.ReadsStandardInput("the standard input");
    } else {
        roles.Reads("the events", events);
    }
    for (size_t i = 0; i < policies.size(); ++i) {
        for (const PolicyFile& file : policies[i]->files) {
            roles.Reads(file.what, file.name);
        }
        for (const auto& [name, file] : policies[i]->programs) {
            roles.Reads("the program", Utf8Of(programs[i]->FileOf({name, {}})));
        }
    }
    for (const std::string_view name : {"ZelkBase", "Ferrocore", "mordRev"}) {
        roles.Reads("the library", Utf8Of(libraries / LibraryFileName(name)));
    }
    roles.WritesStandardOutput();
    roles.WritesMessages();
}

ComparedOutput::ComparedOutput(EventSource& events)
    : m_events(events), m_bar(std::cerr, ShowsBar(events), ShowsBar(events) ? events.Size() : 0),
      m_held(std::cout, ShowsBar(events) && IsTerminal(Stream::output) ? &m_bar : nullptr) {}

void ComparedOutput::Flush() {
    m_held.Flush();
    RequireWritten(std::cout, standardOutputName);
}

void ComparedOutput::FlushNowAndThen() {
    constexpr std::chrono::milliseconds betweenFlushes(50);
    RequireWritten(std::cout, standardOutputName);
    const auto now = std::chrono::steady_clock::now();
    if (m_events.IsLive() || now >= m_nextFlush) {
        Flush();
        m_nextFlush = now + betweenFlushes;
    }
}

void ComparedOutput::Run(const std::function<void(EventBatch&)>& decide, const std::function<void()>& end) {
    try {
        DecideInBatches(m_events, m_bar, [&](EventBatch& batch) {
            decide(batch);
            FlushNowAndThen();
        });
    } catch (const std::exception&) {
        m_bar.Finish();
        try {
            end();
            Flush();
        } catch (const std::exception&) { // the first error is reported
        }
        throw;
    }
    m_bar.Finish();
    end();
    Flush();
    if (StopRequested()) {
        throw Stopped("interrupted by " + StopCause() + ": the following events are not decided");
    }
}

} // namespace mordhost
