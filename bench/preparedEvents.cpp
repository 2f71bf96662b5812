#include "preparedEvents.h"

#include <cstring>
#include <fstream>
#include <optional>

#include "decide/dotHost.h"
#include "decide/receiver.h"
#include "decide/reportSink.h"
#include "frame/values.h"
#include "policy/eventReader.h"
#include "policy/memoryDotStore.h"
#include "policy/policyReader.h"
#include "policy/ruleSelection.h"
#include "recording.h"
#include "system/filePath.h"

namespace bench {

namespace {

constexpr int32_t notHeld = 1;

int32_t Give(const std::string& text, char* buffer, int32_t* size) {
    const auto needed = static_cast<int32_t>(text.size() + 1);
    if (buffer == nullptr || *size < needed) {
        *size = needed;
        return RECORD_BUFFER_NEEDED;
    }
    std::memcpy(buffer, text.c_str(), text.size() + 1);
    return RECORD_DELIVERED;
}

// Forwards all calls and keeps the result of the last query.
class ListeningHost final : public IDotHost {
public:
    explicit ListeningHost(IDotHost& host) : m_host(host) {}

    int32_t DeleteDot(const char* guid, const char* mid, int32_t kind, const char* type) override {
        return m_host.DeleteDot(guid, mid, kind, type);
    }
    int32_t QueryDot(const char* request, const char* mid, char** result) override {
        code = m_host.QueryDot(request, mid, result);
        if (*result != nullptr) {
            answer = *result;
        }
        return code;
    }
    int32_t FreeResult(char* result) override { return m_host.FreeResult(result); }

    int32_t code = 0;
    std::optional<std::string> answer;

private:
    IDotHost& m_host;
};

} // namespace

// Recordings have every value.
class PreparedEvents::Event final : public IEventRecord {
public:
    explicit Event(const mordhost::ConnectionEvent& event)
        : m_flags(static_cast<int32_t>(event.flags.value())), m_pid(static_cast<int32_t>(event.pid.value())),
          m_remotePort(event.remotePort.value()), m_localPort(event.localPort.value()), m_netDrv(event.netDrv.value()),
          m_remote(event.remoteAddress.value()), m_local(event.localAddress.value()) {}

    // The names differ in their first characters.
    int32_t GetInt32(const char* name, int32_t* value) override {
        *value = name[0] == 'f' ? m_flags : name[0] == 'p' ? m_pid : name[0] == 'r' ? m_remotePort : m_localPort;
        return RECORD_DELIVERED;
    }
    int32_t GetInt64(const char*, int64_t* value) override {
        *value = m_netDrv;
        return RECORD_DELIVERED;
    }
    int32_t GetString(const char* name, char* buffer, int32_t* size) override {
        return Give(name[0] == 'r' ? m_remote : m_local, buffer, size);
    }

private:
    int32_t m_flags;
    int32_t m_pid;
    int32_t m_remotePort;
    int32_t m_localPort;
    int64_t m_netDrv;
    std::string m_remote;
    std::string m_local;
};

class PreparedEvents::Rule final : public IEventRecord {
public:
    explicit Rule(const mordhost::Rule& rule) : m_rule(rule) {}

    int32_t GetInt32(const char*, int32_t*) override { return notHeld; }
    int32_t GetInt64(const char*, int64_t*) override { return notHeld; }
    int32_t GetString(const char* name, char* buffer, int32_t* size) override {
        return Give(name[0] == 'g' ? m_rule.guid : m_rule.type, buffer, size);
    }

private:
    const mordhost::Rule& m_rule;
};

PreparedEvents::PreparedEvents(const std::filesystem::path& folder, IMordRev& receiver)
    : m_policy(mordhost::ReadPolicy(mordhost::Utf8Of(folder / policyFileName))),
      m_rules(m_policy.rules.begin(), m_policy.rules.end()) {
    Prepare(folder / eventsFileName, receiver);
}

PreparedEvents::~PreparedEvents() = default;

void PreparedEvents::Prepare(const std::filesystem::path& events, IMordRev& receiver) {
    mordhost::MemoryDotStore store(m_policy.dots);
    mordhost::DotHost dots(store);
    ListeningHost host(dots);
    mordhost::ReportSink sink;
    std::vector<std::string> reports;
    mordhost::Receiver library(receiver, m_policy, host, sink);
    std::ifstream file(events, std::ios::binary);
    mordhost::EventReader reader(file, eventsFileName);
    mordhost::RuleSelector selector(m_policy.rules);
    mordhost::ConnectionEvent event;
    while (reader.Next(event)) {
        ++m_count;
        const std::vector<size_t> places = selector.Select(event);
        if (places.empty()) {
            continue;
        }
        const auto failure = m_policy.failures.find(event.name);
        dots.Prescribe(failure == m_policy.failures.end() ? std::nullopt : std::optional(failure->second.failure));
        host.code = 0;
        host.answer.reset();
        const mordhost::Answer answer = library.Decide(event, places);
        sink.Take(reports);

        std::vector<IEventRecord*> chosen;
        for (const size_t place : places) {
            chosen.push_back(&m_rules[place]);
        }
        const auto& rules = *m_choices.insert(std::move(chosen)).first;
        m_asked.push_back({&m_records.emplace_back(event), const_cast<IEventRecord**>(rules.data()), // not written to
                           static_cast<uint32_t>(rules.size()), host.code,
                           host.answer ? m_answers.insert(*host.answer).first->c_str() : nullptr, answer.reply});
    }
}

} // namespace bench
