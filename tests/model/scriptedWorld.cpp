#include "model/scriptedWorld.h"

#include <algorithm>
#include <cstring>

#include "model/scriptedRecord.h"

namespace model {
namespace {

// Nothing is mapped in the first pages of a process.
char* const unreadable = reinterpret_cast<char*>(8);

const char* KindName(OperationKind kind) {
    switch (kind) {
    case OperationKind::Init:
        return "Init";
    case OperationKind::Uninit:
        return "Uninit";
    case OperationKind::GetProperty:
        return "GetProperty";
    case OperationKind::SetNumber:
        return "SetProperty number";
    case OperationKind::SetText:
        return "SetProperty text";
    case OperationKind::SetNullData:
        return "SetProperty null data";
    case OperationKind::SetZeroSize:
        return "SetProperty size 0";
    case OperationKind::Start:
        return "Start";
    case OperationKind::Stop:
        return "Stop";
    case OperationKind::SetAllowList:
        return "SetAllowList";
    case OperationKind::ClearAllowList:
        return "ClearAllowList";
    case OperationKind::SetReportSink:
        return "SetReportSink";
    case OperationKind::HandleEvent:
        return "HandleEvent";
    case OperationKind::ChangeSiblings:
        return "siblings change";
    }
    return "";
}

void AddInputs(const char* name, const RecordScript& record, Trace& trace) {
    for (const auto& [key, number] : record.numbers) {
        trace.Add({"> ", name, " ", key, " ", Decimal(number.value), number.writes ? " result " : " unwritten result ",
                   Decimal(number.result)});
    }
    for (const auto& [key, text] : record.texts) {
        trace.Add({"> ", name, " ", key, " ", text.bytes, " results ", Decimal(text.firstResult), " ",
                   Decimal(text.secondResult), " size ", Decimal(text.firstSize)});
    }
}

} // namespace

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
    if (m_verbose) {
        m_trace.Add(
            {"> key ", Decimal(operation.key), " number ", Decimal(operation.number), " text ", operation.text});
    }
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
        if (m_verbose) {
            m_trace.Add({"> ", m_siblings.settlesLogging ? "" : "no log settings, ",
                         m_siblings.writesLog ? "WriteLog=1" : "no ini file", ", machine id ", m_siblings.machineId,
                         " result ", Decimal(m_siblings.machineIdResult)});
        }
        return;
    }
    m_trace.Add(result ? "= true" : "= false");
}

bool ScriptedWorld::SetProperty(const Operation& operation) {
    if (operation.kind == OperationKind::SetText) {
        // Sized exactly: sanitizers find a read past the NUL.
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
    if (m_verbose) {
        AddInputs("event", script.event, m_trace);
        for (size_t i = 0; i < script.rules.size(); ++i) {
            AddInputs(("rule " + std::to_string(i)).c_str(), script.rules[i], m_trace);
        }
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
    ++m_queries;
    const EventScript& script = *m_event;
    if (m_verbose) {
        m_trace.Add({"> answer ", script.answer ? *script.answer : std::string("null"), " result ",
                     Decimal(script.queryResult), " delete ", Decimal(script.deleteResult)});
    }
    Run(script.duringQuery);
    if (script.unreadableAnswer) {
        *result = unreadable;
    } else if (script.answer) {
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
    m_trace.Add({name, ".FreeResult ",
                 result == nullptr      ? "null"
                 : known                ? "answer"
                 : result == unreadable ? "unreadable"
                                        : "unknown"});
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
