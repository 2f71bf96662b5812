#include "unit/host/randomRecording.h"

#include "frame/values.h"
#include "output/jsonText.h"
#include "policy/memoryDotStore.h"
#include "policy/timestamp.h"
#include "usage/trialSession.h"

using namespace mordhost;

namespace mordhostTest {

namespace {

constexpr auto halfTime = "2026-11-20T12:00:00Z";

// The texts that the library writes into its records are among them.
const std::vector<std::string> guids = {"A", "B", "C", "w", "", "web", "A,rule guid=B", "x\ndata format error."};
const std::vector<std::string> types = {"web", "web", "a", "b", "WEB", "A"};
const std::vector<std::string> mids = {"M", "N", "O", "", "M,rule guid=A", "N,reply:1"};

} // namespace

std::string RandomCase::Pick(const std::vector<std::string>& texts) {
    return texts[static_cast<size_t>(Below(static_cast<int>(texts.size())))];
}

Policy RandomCase::MakePolicy() {
    Policy policy;
    policy.machineId = "HERE";
    constexpr uint32_t noSpecialMode = 2;
    const uint32_t modes[] = {MODE_ACTION_TABLE, MODE_ACTION_TABLE,         MODE_ACTION_TABLE, noSpecialMode,
                              MODE_ALL_FORBID,   MODE_ALLOW_AFTER_DECISION, MODE_EMERGENCY};
    policy.defenderMode = modes[Below(std::size(modes))];
    if (OneOf(4)) {
        policy.defenderMode = OneOf(2) ? MODE_EMERGENCY : MODE_ALLOW_AFTER_DECISION;
        policy.defenderModeEnd = ModeEnd{*ParseTimestamp(halfTime), modes[Below(std::size(modes))], {}};
    }
    policy.exceptionMode = OneOf(2) ? EXCEPTION_ALLOW : 0U;
    for (int count = 1 + Below(6); count > 0; --count) {
        Rule rule;
        rule.guid = Pick(guids);
        rule.type = OneOf(10) ? Pick(guids) : Pick(types);
        if (OneOf(2)) {
            const auto port = static_cast<uint16_t>(1 + Below(4));
            rule.localPorts = {{port, static_cast<uint16_t>(port + Below(2))}};
        }
        policy.rules.push_back(std::move(rule));
    }
    const auto key = [&] {
        const Rule& rule = policy.rules[static_cast<size_t>(Below(static_cast<int>(policy.rules.size())))];
        return OneOf(2) ? rule.guid : rule.type;
    };
    for (int count = Below(7); count > 0; --count) {
        policy.allowListEntries.push_back({Pick(mids), key(), {}, {}});
        if (OneOf(4)) {
            policy.allowListEntries.push_back(policy.allowListEntries.front());
        }
    }
    for (int count = Below(5); count > 0; --count) {
        const std::string type = Pick(types);
        policy.actionRows.push_back({type, Below(3) - 1, {}});
    }
    for (const Rule& rule : policy.rules) {
        if (!OneOf(4)) {
            std::set<std::string>& machines = policy.dots[rule.guid];
            for (int count = Below(4); count > 0; --count) {
                machines.insert(Pick(mids));
            }
        }
    }
    policy.dots["of no rule"] = {"M"};
    if (OneOf(3)) {
        policy.failures["e3"] = {static_cast<Failure>(Below(3)), {}};
    }
    WriteDocuments(policy);
    return policy;
}

std::vector<ConnectionEvent> RandomCase::MakeEvents() {
    std::vector<ConnectionEvent> events(static_cast<size_t>(Below(12)));
    size_t line = 0;
    for (ConnectionEvent& event : events) {
        event.line = ++line;
        event.name = "e" + std::to_string(Below(6));
        event.localPort = static_cast<uint16_t>(1 + Below(5));
        event.localAddress = "192.0.2.1";
        event.remoteAddress = "192.0.2." + std::to_string(1 + Below(3));
        event.pid = 4; // the system process, whose path is constant
        event.flags = (OneOf(8) ? EVENT_FLAG_DISCONNECT : 0U) | (OneOf(4) ? EVENT_FLAG_REPLY_TWO : 0U);
        event.time = line * 2 < events.size() ? "2026-11-20T11:00:00Z" : "2026-11-20T13:00:00Z";
    }
    return events;
}

void WriteDocuments(Policy& policy) {
    policy.allowList = LibraryDocument{AllowListText(policy.allowListEntries), {}};
    // The library refuses a table without rows and keeps what the policy before has set.
    std::string rows = "{\"of no rule\":0";
    for (const ActionRow& row : policy.actionRows) {
        rows += ',';
        AppendJsonString(rows, row.type);
        rows += ':' + std::to_string(row.action);
    }
    policy.actions = LibraryDocument{rows + '}', {}};
}

SessionOptions RealLibrary() {
    SessionOptions options;
    options.libraries = MORDHOST_LIBRARY_DIRECTORY;
    options.now = [] { return *ParseTimestamp(halfTime); };
    return options;
}

std::vector<std::string> VerdictsOf(const Policy& policy, std::vector<ConnectionEvent> events) {
    MemoryDotStore store(policy.dots);
    SessionOptions options = RealLibrary();
    options.logging = false;
    DecisionSession session(policy, store, options);
    std::vector<std::string> verdicts;
    for (ConnectionEvent& event : events) {
        verdicts.push_back(VerdictOf(session.Decide(std::move(event))));
    }
    return verdicts;
}

} // namespace mordhostTest
