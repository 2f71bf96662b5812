#include "decide/receiver.h"

#include "decide/libraries.h"
#include "frame/values.h"

namespace mordhost {

namespace {

void SetText(IMordRev& object, PropertyKey key, std::string text, const std::string& what) {
    if (!object.SetProperty(key, text.data(), static_cast<uint32_t>(text.size() + 1))) {
        throw LoadError("the library does not accept " + what);
    }
}

void SetWord(IMordRev& object, PropertyKey key, uint32_t word, const std::string& what) {
    if (!object.SetProperty(key, &word, sizeof word)) {
        throw LoadError("the library does not accept " + what);
    }
}

void Apply(IMordRev& object, const Policy& policy) {
    if (policy.machineId) {
        SetText(object, PROP_MID, *policy.machineId, "the machine id");
    }
    if (policy.defenderMode) {
        SetWord(object, PROP_DEFENDER_MODE, *policy.defenderMode, "the defender mode");
    }
    if (policy.exceptionMode) {
        SetWord(object, PROP_EXCEPTION_MODE, *policy.exceptionMode, "the exception mode");
    }
    if (policy.actions) {
        std::string text = policy.actions->text;
        if (!object.SetProperty(PROP_ACTION_JSON, text.data(), static_cast<uint32_t>(text.size() + 1))) {
            throw DocumentError(policy.actions->where, "the library refuses the action document");
        }
    }
    if (policy.allowList && !object.SetAllowList(policy.allowList->text.c_str())) {
        throw DocumentError(policy.allowList->where, "the library refuses the allow list");
    }
}

} // namespace

Receiver::Receiver(IMordRev& object, const Policy& policy, IDotHost& host, IReportSink& sink)
    : m_object(object), m_rules(policy.rules.begin(), policy.rules.end()) {
    if (!m_object.Init(&host)) {
        throw LoadError("the library does not start: it could not set up its logging");
    }
    Apply(m_object, policy);
    m_object.SetReportSink(&sink);
    m_object.Start();
}

Receiver::~Receiver() {
    m_object.Stop();
    m_object.SetReportSink(nullptr);
    m_object.Uninit();
}

void Receiver::SetDefenderMode(uint32_t mode) {
    SetWord(m_object, PROP_DEFENDER_MODE, mode, "the defender mode");
}

void Receiver::SetAllowList(const std::string& document) {
    if (!m_object.SetAllowList(document.c_str())) {
        throw LoadError("the library does not accept the allow list");
    }
}

void Receiver::SetExceptionMode(uint32_t mode) {
    SetWord(m_object, PROP_EXCEPTION_MODE, mode, "the exception mode");
}

Answer Receiver::Decide(const ConnectionEvent& event, const std::vector<size_t>& rules) {
    EventRecord record(event);
    m_chosen.clear();
    for (const size_t place : rules) {
        m_chosen.push_back(&m_rules[place]);
    }
    Answer answer;
    const auto begin = std::chrono::steady_clock::now();
    answer.settled =
        m_object.HandleEvent(&record, m_chosen.data(), static_cast<uint32_t>(m_chosen.size()), &answer.reply);
    answer.duration = std::chrono::steady_clock::now() - begin;
    return answer;
}

} // namespace mordhost
