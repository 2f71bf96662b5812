#include "model/scriptedWorld.h"

#include <algorithm>
#include <cstring>

#include "model/scriptedRecord.h"

namespace model {

class ScriptedWorld::Host final : public IDotHost {
public:
    Host(ScriptedWorld& world, std::string name) : m_world(world), m_name(std::move(name)) {}

    int32_t DeleteDot(const char* guid, const char* mid, int32_t kind, const char* type) override {
        return m_world.DeleteDot(m_name, guid, mid, kind, type);
    }
    int32_t QueryDot(const char* guidJson, const char* mid, char** result) override {
        return m_world.QueryDot(m_name, guidJson, mid, result);
    }
    int32_t FreeResult(char* result) override { return m_world.FreeResult(m_name, result); }

private:
    ScriptedWorld& m_world;
    std::string m_name;
};

class ScriptedWorld::Sink final : public IReportSink {
public:
    Sink(ScriptedWorld& world, std::string name) : m_world(world), m_name(std::move(name)) {}

    int32_t Report(int32_t kind, const char* text, uint32_t size) override {
        return m_world.Report(m_name, kind, text, size);
    }

private:
    ScriptedWorld& m_world;
    std::string m_name;
};

ScriptedWorld::ScriptedWorld(IMordRev& receiver, SiblingState& siblings, Trace& trace)
    : m_receiver(receiver), m_siblings(siblings), m_trace(trace) {
    for (const char* const number : {"0", "1"}) {
        m_hosts.push_back(std::make_unique<Host>(*this, std::string("host ") + number));
        m_sinks.push_back(std::make_unique<Sink>(*this, std::string("sink ") + number));
    }
}

ScriptedWorld::~ScriptedWorld() = default;

void ScriptedWorld::Run(const std::vector<Operation>& operations) {
    for (const Operation& operation : operations) {
        Run(operation);
    }
}

void ScriptedWorld::Run(const Operation& operation) {
    m_trace.Add({"> ", KindName(operation.kind)});
    bool result = true;
    switch (operation.kind) {
    case OperationKind::Init:
        result = m_receiver.Init(operation.number == 2 ? nullptr : m_hosts[operation.number].get());
        break;
    case OperationKind::Uninit:
        result = m_receiver.Uninit();
        break;
    case OperationKind::GetProperty:
        result = m_receiver.GetProperty(operation.number, operation.number, operation.number);
        break;
    case OperationKind::SetNumber:
    case OperationKind::SetText:
    case OperationKind::SetNullData:
    case OperationKind::SetZeroSize:
        result = SetProperty(operation);
        break;
    case OperationKind::Start:
        result = m_receiver.Start();
        break;
    case OperationKind::Stop:
        result = m_receiver.Stop();
        break;
    case OperationKind::SetAllowList:
        result = m_receiver.SetAllowList(operation.text.c_str());
        break;
    case OperationKind::ClearAllowList:
        result = m_receiver.ClearAllowList();
        break;
    case OperationKind::SetReportSink:
        result = m_receiver.SetReportSink(operation.number == 2 ? nullptr : m_sinks[operation.number].get());
        break;
    case OperationKind::HandleEvent:
        HandleEvent(operation.event.front());
        return;
    case OperationKind::ChangeSiblings:
        m_siblings = operation.siblings;
        return;
    }
    m_trace.Add(result ? "= true" : "= false");
}

bool ScriptedWorld::SetProperty(const Operation& operation) {
    if (operation.kind == OperationKind::SetText) {
        // A buffer of its own size: a read past the NUL is found by the sanitizers.
        std::vector<char> text(operation.text.c_str(),
                               operation.text.c_str() + std::strlen(operation.text.c_str()) + 1);
        return m_receiver.SetProperty(operation.key, text.data(), static_cast<uint32_t>(text.size()));
    }
    uint32_t number = operation.number;
    const bool null = operation.kind == OperationKind::SetNullData;
    const bool noSize = operation.kind == OperationKind::SetZeroSize;
    return m_receiver.SetProperty(operation.key, null ? nullptr : &number, noSize ? 0 : 4);
}

void ScriptedWorld::HandleEvent(const EventScript& script) {
    ScriptedRecord event("event", script.event, m_trace);
    std::vector<ScriptedRecord> rules;
    rules.reserve(script.rules.size());
    std::vector<IEventRecord*> pointers;
    for (const RecordScript& rule : script.rules) {
        rules.emplace_back("rule " + std::to_string(rules.size()), rule, m_trace);
        pointers.push_back(&rules.back());
    }
    uint32_t reply = script.replyBefore;
    const EventScript* const outer = m_event;
    m_event = &script;
    const bool result = m_receiver.HandleEvent(
        script.nullEvent ? nullptr : &event, script.nullRules ? nullptr : pointers.data(),
        script.noRules ? 0 : static_cast<uint32_t>(pointers.size()), script.nullReply ? nullptr : &reply);
    m_event = outer;
    m_trace.Add({result ? "= true" : "= false", " reply ", Decimal(reply), " answers out ", Decimal(m_answers.size())});
}

int32_t ScriptedWorld::QueryDot(const std::string& name, const char* guidJson, const char* mid, char** result) {
    m_trace.Add({name, ".QueryDot ", guidJson, " ", Shown(mid), *result == nullptr ? "" : " not preset to null"});
    const EventScript& script = *m_event;
    Run(script.duringQuery);
    if (script.answer) {
        const size_t length = std::strlen(script.answer->c_str());
        auto text = std::make_unique<char[]>(length + 1);
        std::copy_n(script.answer->c_str(), length + 1, text.get());
        *result = text.get();
        m_answers[text.get()] = std::move(text);
    }
    return script.queryResult;
}

int32_t ScriptedWorld::DeleteDot(const std::string& name, const char* guid, const char* mid, int32_t kind,
                                 const char* type) {
    m_trace.Add({name, ".DeleteDot ", Shown(guid), " ", Shown(mid), " ", Decimal(kind), " ", Shown(type)});
    const EventScript& script = *m_event;
    Run(script.duringDelete);
    return script.deleteResult;
}

int32_t ScriptedWorld::FreeResult(const std::string& name, char* result) {
    const bool known = m_answers.erase(result) != 0;
    m_trace.Add({name, ".FreeResult ", result == nullptr ? "null" : known ? "answer" : "unknown"});
    const EventScript& script = *m_event;
    Run(script.duringFree);
    return script.freeResult;
}

int32_t ScriptedWorld::Report(const std::string& name, int32_t kind, const char* text, uint32_t size) {
    m_trace.Add({name, ".Report ", Decimal(kind), " ", {text, size}, text[size] == '\0' ? "" : " without NUL"});
    const EventScript& script = *m_event;
    Run(script.duringReport);
    return script.reportResult;
}

} // namespace model
