// Drafts of allow lists from events alone, and recordings in files.
#include "usage/draft.h"

#include <gtest/gtest.h>

#include "frame/values.h"
#include "kit/text/runSeed.h"
#include "system/fileError.h"
#include "system/runError.h"
#include "unit/host/randomRecording.h"
#include "unit/host/temporaryDirectory.h"
#include "usage/fileRecording.h"
#include "usage/verdictFile.h"

using namespace mordhost;
using namespace mordhostTest;

namespace {

ConnectionEvent EventOf(size_t line, const char* address, uint16_t port, uint32_t flags = 0) {
    ConnectionEvent event;
    event.line = line;
    event.remoteAddress = address;
    event.localPort = port;
    event.flags = flags;
    event.pid = 4;
    return event;
}

// Has another event at each reading.
class ChangingRecording final : public Recording {
public:
    void Rewind() override { m_left = 1 + ++m_readings % 2; }
    bool Next(ConnectionEvent& event) override {
        event = EventOf(1, "192.0.2.1", 1);
        return m_left-- > 0;
    }
    const std::string& File() const override { return m_name; }

private:
    int m_readings = 0;
    int m_left = 0;
    std::string m_name;
};

std::vector<size_t> LinesIn(FileRecording& recording) {
    std::vector<size_t> lines;
    recording.Rewind();
    for (ConnectionEvent event; recording.Next(event);) {
        lines.push_back(event.line);
    }
    return lines;
}

} // namespace

TEST(Draft, HasAnEntryForEachAddressAndPort) {
    ConnectionEvent incomplete;
    incomplete.line = 9;
    MemoryRecording recording({EventOf(1, "192.0.2.1", 22), EventOf(2, "192.0.2.1", 22, EVENT_FLAG_REPLY_TWO),
                               EventOf(3, "2001:DB8::1", 22), EventOf(4, "192.0.2.1", 80),
                               EventOf(5, "::ffff:192.0.2.1", 80), EventOf(6, "192.0.2.9", 80, EVENT_FLAG_DISCONNECT),
                               incomplete});
    const Draft draft = MakeDraft(recording, RealLibrary(), 1);
    std::string entries;
    for (const Suggestion& entry : draft.entries) {
        entries += entry.machine + '@' + entry.key + '=' + std::to_string(entry.events.Count()) + ' ';
        EXPECT_EQ(entry.events.First().size(), 1U);
    }
    EXPECT_EQ(entries, "192.0.2.1@port-22=2 2001:db8::1@port-22=1 192.0.2.1@port-80=2 ");
    EXPECT_EQ(draft.events, 7U);
    EXPECT_EQ(draft.allowed, 5U);
    EXPECT_EQ(draft.disconnects, 1U);
    EXPECT_EQ(draft.incomplete, 1U);
}

// With a rule and a dot for each connection, the entries allow the events that they name.
TEST(Draft, AllowsExactlyTheEventsThatItNames) {
    constexpr uint64_t cases = MORDHOST_USAGE_CASES;
    size_t named = 0;
    for (uint64_t i = 0; i < cases && !testing::Test::HasFailure(); ++i) {
        RandomCase random(kit::RunSeed() + i);
        const std::vector<ConnectionEvent> events = random.MakeEvents();
        MemoryRecording recording(events);
        const Draft draft = MakeDraft(recording, RealLibrary(), events.size());
        std::set<size_t> lines;
        Policy policy;
        policy.machineId = "HERE";
        policy.defenderMode = MODE_ACTION_TABLE;
        for (const Suggestion& entry : draft.entries) {
            for (const NamedEvent& event : entry.events.First()) {
                EXPECT_TRUE(lines.insert(event.line).second);
            }
            policy.allowListEntries.push_back({entry.machine, entry.key, {}, {}});
        }
        std::vector<ConnectionEvent> connections;
        for (const ConnectionEvent& event : events) {
            if ((event.flags.value_or(0) & EVENT_FLAG_DISCONNECT) != 0) {
                continue;
            }
            const AddressRange from{*ParseIpAddress(*event.remoteAddress), 32};
            const std::string guid = std::to_string(event.line);
            const uint16_t port = *event.localPort;
            policy.rules.push_back({guid, "port-" + std::to_string(port), {{port, port}}, {}, {from}, {}});
            policy.dots[guid] = {*event.remoteAddress};
            connections.push_back(event);
        }
        WriteDocuments(policy);
        const std::vector<std::string> verdicts = VerdictsOf(policy, connections);
        std::set<size_t> allowed;
        for (size_t event = 0; event < verdicts.size(); ++event) {
            if (verdicts[event].starts_with("allow")) {
                allowed.insert(connections[event].line);
            }
        }
        EXPECT_EQ(lines, allowed) << i;
        named += lines.size();
    }
    EXPECT_GT(named, cases);
}

TEST(Draft, RefusesARecordingThatChanges) {
    ChangingRecording recording;
    EXPECT_THROW(MakeDraft(recording, RealLibrary(), 1), RunError);
}

TEST(FileRecording, ReadsItsFilesOneAfterTheOtherAndAgain) {
    const kit::TemporaryDirectory directory;
    const std::string one = directory.Write("one", "{}\n\n{}\n");
    const std::string none = directory.Write("none", "");
    const std::string two = directory.Write("two", "{}");
    FileRecording recording({one, none, two, one}, FileRecording::Use::repeated);
    const std::vector<size_t> lines = {1, 3, 1, 1, 3};
    EXPECT_EQ(LinesIn(recording), lines);
    EXPECT_EQ(LinesIn(recording), lines);
    EXPECT_EQ(recording.File(), one);
    EXPECT_EQ(recording.Done(), 16U);
    EXPECT_THROW(FileRecording({"-", one, "-"}, FileRecording::Use::once), FileError);
}

TEST(VerdictFile, KeepsTheVerdictsAndNotesAnyOtherNumberOfEvents) {
    VerdictFile verdicts;
    for (const bool verdict : {true, false, true}) {
        verdicts.Write(verdict);
    }
    for (int reading = 0; reading < 2; ++reading) {
        verdicts.Rewind();
        EXPECT_TRUE(verdicts.Next());
        EXPECT_FALSE(verdicts.Next());
        EXPECT_THROW(verdicts.RequireEnd(), RunError);
    }
    verdicts.Rewind();
    for (int event = 0; event < 3; ++event) {
        verdicts.Next();
    }
    EXPECT_NO_THROW(verdicts.RequireEnd());
    EXPECT_THROW(verdicts.Next(), RunError);
}
