// Runs a case on one receiver: does the operations in order, plays the host, its records and its sinks by the script,
// and writes all that passes between the two into a trace.
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
    // `siblings` is what the receiver's siblings answer by; it changes as the case tells.
    ScriptedWorld(IMordRev& receiver, SiblingState& siblings, Trace& trace);
    ~ScriptedWorld();
    ScriptedWorld(const ScriptedWorld&) = delete;
    ScriptedWorld& operator=(const ScriptedWorld&) = delete;

    void Run(const std::vector<Operation>& operations);

private:
    class Host;
    class Sink;

    void Run(const Operation& operation);
    bool SetProperty(const Operation& operation);
    void HandleEvent(const EventScript& script);

    // The calls into the host; `name` tells which host or sink was called.
    int32_t QueryDot(const std::string& name, const char* guidJson, const char* mid, char** result);
    int32_t DeleteDot(const std::string& name, const char* guid, const char* mid, int32_t kind, const char* type);
    int32_t FreeResult(const std::string& name, char* result);
    int32_t Report(const std::string& name, int32_t kind, const char* text, uint32_t size);

    IMordRev& m_receiver;
    SiblingState& m_siblings;
    Trace& m_trace;
    std::vector<std::unique_ptr<Host>> m_hosts;
    std::vector<std::unique_ptr<Sink>> m_sinks;
    const EventScript* m_event = nullptr;                     // the one that is being handled
    std::map<const char*, std::unique_ptr<char[]>> m_answers; // those that were not given back
};

} // namespace model
