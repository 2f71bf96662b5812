#include "fuzz/receiver/receiverPair.h"

#include <algorithm>
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
constexpr size_t fewIds = 3;
constexpr size_t idsToAsk = 16; // of a key with more, about

} // namespace

ReceiverPair& ReceiverPair::Instance() {
    static auto* const pair = new ReceiverPair;
    return *pair;
}

ReceiverPair::ReceiverPair() : modelReceiver(m_trace, m_siblings, m_branches) {
    m_siblings.writesLog = false;
    kit::takeRecord = TakeRecord;
    const std::pair<IMordRev*, HostSide*> both[] = {{&library, &librarySide}, {&modelReceiver, &modelSide}};
    for (const auto& [receiver, side] : both) {
        Require(receiver->Init(side), "Init succeeds");
        receiver->SetReportSink(side);
    }
    LogFileEnabled = false;
    ForgetRecords();
    m_trace = model::Trace(); // the start of the siblings
    ResetTables();
    RequireTheSame();
    m_knownList = modelReceiver.AllowList();
    m_knownActions = modelReceiver.Actions();
}

void ReceiverPair::Begin(bool logs) {
    LogFileEnabled = false;
    modelReceiver.SetLogging(false);
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
    modelReceiver.SetLogging(logs);
    librarySide.Begin({}, {nullptr, 0});
    modelSide.Begin({}, {nullptr, 0});
}

void ReceiverPair::ResetTables() {
    for (IMordRev* const receiver : {static_cast<IMordRev*>(&library), static_cast<IMordRev*>(&modelReceiver)}) {
        std::vector<char> actions = Copy(knownActions);
        Require(receiver->SetAllowList(knownAllowList), "the known allow list is accepted");
        Require(receiver->SetProperty(PROP_ACTION_JSON, actions.data(), 1), "the known actions are accepted");
    }
}

void ReceiverPair::RequireTheSame() {
    MordRevFields fields(library);
    Require(fields.Lock().try_lock(), "the lock is free");
    fields.Lock().unlock();
    Require(librarySide.Calls() == modelSide.Calls(), "the receiver makes the same calls as the model");
    Require(librarySide.InputLeft() == modelSide.InputLeft(), "the receiver takes as much of the input as the model");
    const auto sameList = [](const auto& left, const auto& right) {
        return left.first == right.first &&
               std::equal(left.second.begin(), left.second.end(), right.second.begin(), right.second.end());
    };
    const auto& allowed = fields.AllowedMids();
    const auto& modelAllowed = modelReceiver.AllowList();
    Require(std::equal(allowed.begin(), allowed.end(), modelAllowed.begin(), modelAllowed.end(), sameList),
            "the allow list is that of the model");
    const auto& actions = fields.Actions();
    const auto& modelActions = modelReceiver.Actions();
    Require(std::equal(actions.begin(), actions.end(), modelActions.begin(), modelActions.end()),
            "the action table is that of the model");
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
    Require(librarySide.Calls() == modelSide.Calls(), "a known event is decided as by the model");
}

void ReceiverPair::RequireKnownMatches() {
    const auto ask = [this](const std::string& key, const model::TextSet& mids) {
        std::string matched = "none";
        std::string modelMatched = "none";
        const std::vector<std::string_view> views(mids.begin(), mids.end());
        const bool result = library.IsMatchmid(key, views, &matched);
        const bool modelResult = modelReceiver.IsMatchmid(key, mids, modelMatched);
        Require(result == modelResult && matched == modelMatched, "a machine id matches as in the model");
    };
    const auto askSome = [&ask](const std::string& key, const model::TextSet& mids) {
        const size_t stride = mids.size() / idsToAsk + 1;
        size_t number = 0;
        for (const std::string& mid : mids) {
            if (number++ % stride == 0) {
                ask(key, {mid});
                ask(key, {mid + "0"});
            }
        }
        model::TextSet allButFirst = mids;
        allButFirst.erase(allButFirst.begin());
        ask(key, allButFirst);
    };
    size_t asked = 0;
    for (const auto& [key, mids] : modelReceiver.AllowList()) {
        ask(key, {"nobody", *mids.rbegin(), "M"});
        if (mids.size() > fewIds) {
            askSome(key, mids);
        }
        if (++asked == keysToAsk) {
            break;
        }
    }
    ask("K", {"N", "nobody"});
}
