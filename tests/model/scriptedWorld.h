// The host side of one receiver: runs operations in order, answers as host, records and sinks by the script, and writes
// all calls in both directions into a trace.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "frame/interfaces.h"
#include "model/siblingState.h"
#include "model/testCase.h"
#include "model/trace.h"

namespace model {

class ScriptedWorld {
public:
    // `siblings` is the state of the receiver's siblings, which operations change.
    ScriptedWorld(IMordRev& receiver, SiblingState& siblings, Trace& trace);
    ~ScriptedWorld();
    ScriptedWorld(const ScriptedWorld&) = delete;
    ScriptedWorld& operator=(const ScriptedWorld&) = delete;

    void Run(const std::vector<Operation>& operations);

    // Adds the inputs to the trace: documents, values of records, answers. For reports of a difference.
    void SetVerbose(bool verbose) { m_verbose = verbose; }

    // QueryDot calls since the beginning.
    uint64_t Queries() const { return m_queries; }

private:
    class Host;
    class Sink;

    void Run(const Operation& operation);
    bool SetProperty(const Operation& operation);
    void HandleEvent(const EventScript& script);

    // The calls to the host; `name` is the host or sink.
    int32_t QueryDot(const std::string& name, const char* guidJson, const char* mid, char** result);
    int32_t DeleteDot(const std::string& name, const char* guid, const char* mid, int32_t kind, const char* type);
    int32_t FreeResult(const std::string& name, char* result);
    int32_t Report(const std::string& name, int32_t kind, const char* text, uint32_t size);

    IMordRev& m_receiver;
    SiblingState& m_siblings;
    Trace& m_trace;
    std::vector<std::unique_ptr<Host>> m_hosts;
    std::vector<std::unique_ptr<Sink>> m_sinks;
    const EventScript* m_event = nullptr;                     // in progress
    std::map<const char*, std::unique_ptr<char[]>> m_answers; // not given back yet
    bool m_verbose = false;
    uint64_t m_queries = 0;
};

} // namespace model
