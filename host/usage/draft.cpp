#include "usage/draft.h"

#include <set>
#include <unordered_map>
#include <utility>

#include "document/ipAddress.h"
#include "frame/values.h"
#include "policy/dotQuery.h"
#include "system/runError.h"
#include "usage/trialSession.h"

namespace mordhost {

namespace {

// Holds a dot of one machine for every rule.
class DotsOfOneMachine final : public DotStore {
public:
    void SetMachine(const std::string& machine) { m_value = DotValue({machine}); }

    Result Find(const std::vector<std::string_view>& guids, std::vector<const std::string*>& dots) override {
        dots.assign(guids.size(), &m_value);
        return Result::answered;
    }
    bool Delete(const std::string&) noexcept override { return true; }
    size_t Size() const override { return 0; }
    const std::string& Trouble() const override { return m_trouble; }

private:
    std::string m_value;
    const std::string m_trouble;
};

// The address of the remote end as a machine id; empty if the event has none.
std::string MachineOf(const ConnectionEvent& event) {
    const auto address = ParseIpAddress(event.remoteAddress.value_or(""));
    return address ? TextOf(*address) : std::string();
}

std::string KeyOfPort(uint16_t port) {
    return "port-" + std::to_string(port);
}

class Drafter {
public:
    Drafter(Recording& recording, size_t most) : m_recording(recording), m_most(most) {}

    Draft Make(const SessionOptions& options) {
        Collect();
        if (!m_draft.entries.empty()) {
            Confirm(options);
        }
        return std::move(m_draft);
    }

private:
    void Collect() {
        m_recording.Rewind();
        ConnectionEvent event;
        while (m_recording.Next(event)) {
            ++m_draft.events;
            if ((event.flags.value_or(0) & EVENT_FLAG_DISCONNECT) != 0) {
                ++m_draft.disconnects;
                continue;
            }
            std::string machine = MachineOf(event);
            if (machine.empty() || !event.localPort) {
                ++m_draft.incomplete;
                continue;
            }
            m_ports.insert(*event.localPort);
            if (m_indexes.emplace(IndexName(*event.localPort, machine), m_draft.entries.size()).second) {
                Suggestion& entry = m_draft.entries.emplace_back();
                entry.machine = std::move(machine);
                entry.key = KeyOfPort(*event.localPort);
            }
        }
    }

    Policy MakePolicy() const {
        Policy policy;
        policy.machineId = "draft";
        policy.defenderMode = MODE_ACTION_TABLE;
        for (const uint16_t port : m_ports) {
            Rule& rule = policy.rules.emplace_back();
            rule.guid = rule.type = KeyOfPort(port);
            rule.localPorts = {{port, port}};
        }
        for (const Suggestion& entry : m_draft.entries) {
            policy.allowListEntries.push_back({entry.machine, entry.key, {}, {}});
        }
        policy.allowList = LibraryDocument{AllowListText(policy.allowListEntries), {}};
        return policy;
    }

    void Confirm(const SessionOptions& options) {
        const Policy policy = MakePolicy();
        DotsOfOneMachine dots;
        DecisionSession session(policy, dots, options);
        m_recording.Rewind();
        ConnectionEvent event;
        size_t events = 0;
        for (; m_recording.Next(event); ++events) {
            const std::string machine = MachineOf(event);
            dots.SetMachine(machine);
            const Decision& decision = session.Decide(std::move(event));
            if (decision.reason.code == ReasonCode::machineAllowed) {
                ++m_draft.allowed;
                EntryOf(policy.rules[decision.reason.rules.back().rule].localPorts.front().first, machine)
                    .events.Add(m_recording.File(), decision.event, m_most);
            }
        }
        if (events != m_draft.events) {
            throw RunError(changedRecording);
        }
    }

    Suggestion& EntryOf(uint16_t port, const std::string& machine) {
        const auto entry = m_indexes.find(IndexName(port, machine));
        if (entry == m_indexes.end()) {
            throw RunError(changedRecording);
        }
        return m_draft.entries[entry->second];
    }

    static std::string IndexName(uint16_t port, const std::string& machine) { return KeyOfPort(port) + '\0' + machine; }

    Recording& m_recording;
    const size_t m_most;
    Draft m_draft;
    std::set<uint16_t> m_ports;
    std::unordered_map<std::string, size_t> m_indexes; // of the entries
};

} // namespace

Draft MakeDraft(Recording& recording, const SessionOptions& options, size_t most) {
    return Drafter(recording, most).Make(options);
}

} // namespace mordhost
