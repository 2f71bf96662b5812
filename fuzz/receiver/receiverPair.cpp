#include "fuzz/receiver/receiverPair.h"

#include <algorithm>
#include <array>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

#include "fuzz/receiver/records.h"
#include "fuzz/receiver/vocabulary.h"
#include "fuzz/require.h"
#include "kit/system/quietSystem.h"
#include "logging/logState.h"

namespace {

constexpr size_t keysToAsk = 4;

} // namespace

ReceiverPair& ReceiverPair::Instance() {
    static auto* const pair = new ReceiverPair;
    return *pair;
}

ReceiverPair::ReceiverPair() : modelReceiver(m_trace, m_siblings, m_branches) {
    m_siblings.logs = false;
    kit::takeRecord = TakeRecord;
    const std::pair<IMordRev*, HostSide*> both[] = {{&library, &librarySide}, {&modelReceiver, &modelSide}};
    for (const auto& [receiver, side] : both) {
        Require(receiver->Init(side), "a receiver is initialised");
        receiver->SetReportSink(side);
    }
    LogFileEnabled = false;
    ForgetRecords();
    ResetTables();
    RequireTheSame();
    m_knownList = modelReceiver.AllowList();
    m_knownActions = modelReceiver.Actions();
}

void ReceiverPair::Begin(bool logs) {
    LogFileEnabled = false;
    m_siblings.logs = false;
    for (IMordRev* const receiver : {static_cast<IMordRev*>(&library), static_cast<IMordRev*>(&modelReceiver)}) {
        receiver->Start();
        SetMode(*receiver, PROP_DEFENDER_MODE, MODE_ACTION_TABLE);
        SetMode(*receiver, PROP_EXCEPTION_MODE, EXCEPTION_BLOCK);
    }
    if (modelReceiver.AllowList() != m_knownList || modelReceiver.Actions() != m_knownActions) {
        ResetTables();
    }
    m_logs = logs;
    LogFileEnabled = logs;
    m_siblings.logs = logs;
    librarySide.Begin({}, {nullptr, 0});
    modelSide.Begin({}, {nullptr, 0});
}

void ReceiverPair::ResetTables() {
    for (IMordRev* const receiver : {static_cast<IMordRev*>(&library), static_cast<IMordRev*>(&modelReceiver)}) {
        std::vector<char> actions = Copy(knownActions);
        Require(receiver->SetAllowList(knownAllowList), "the known list is taken");
        Require(receiver->SetProperty(PROP_ACTION_JSON, actions.data(), 1), "the known actions are taken");
    }
}

void ReceiverPair::RequireTheSame() {
    MordRevFields fields(library);
    Require(fields.Lock().try_lock(), "the lock is free");
    fields.Lock().unlock();
    Require(librarySide.Calls() == modelSide.Calls(), "the receiver calls its host as the model does");
    Require(librarySide.InputLeft() == modelSide.InputLeft(), "the receiver reads records as often as the model does");
    const auto sameList = [](const auto& left, const auto& right) {
        return left.first == right.first &&
               std::equal(left.second.begin(), left.second.end(), right.second.begin(), right.second.end());
    };
    const auto& allowed = fields.AllowedMids();
    const auto& modelAllowed = modelReceiver.AllowList();
    Require(std::equal(allowed.begin(), allowed.end(), modelAllowed.begin(), modelAllowed.end(), sameList),
            "the allow list is the model's");
    const auto& actions = fields.Actions();
    const auto& modelActions = modelReceiver.Actions();
    Require(std::equal(actions.begin(), actions.end(), modelActions.begin(), modelActions.end()),
            "the action table is the model's");
    if (m_logs) {
        RequireRecords(m_trace);
        ForgetRecords();
        m_trace = model::Trace();
    }
}

void ReceiverPair::RequireKnownDecision() {
    HostScript script;
    script.answer = knownAnswer;
    const FuzzInput records(nullptr, 0); // every text is the first word, every number 0
    librarySide.Begin(script, records);
    modelSide.Begin(script, records);
    librarySide.HandleEvent(1);
    modelSide.HandleEvent(1);
    Require(librarySide.Calls() == modelSide.Calls(), "a known event is decided as the model does");
}

void ReceiverPair::RequireKnownMatches() {
    const auto ask = [this](const std::string& key, const std::string& mid) {
        std::string matched = "none";
        std::string modelMatched = "none";
        const std::array<std::string_view, 3> asked = {"nobody", mid, "M"};
        const bool result = library.IsMatchmid(key, asked, &matched);
        const bool modelResult = modelReceiver.IsMatchmid(key, {"nobody", mid, "M"}, modelMatched);
        Require(result == modelResult && matched == modelMatched, "the receiver matches as the model does");
    };
    size_t asked = 0;
    for (const auto& [key, mids] : modelReceiver.AllowList()) {
        ask(key, *mids.rbegin());
        if (++asked == keysToAsk) {
            break;
        }
    }
    ask("K", "N");
}
