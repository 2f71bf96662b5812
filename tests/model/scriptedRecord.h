// A record that answers by its script and writes each read into a trace.
#pragma once

#include <string>

#include "frame/interfaces.h"
#include "model/testCase.h"
#include "model/trace.h"

namespace model {

class ScriptedRecord final : public IEventRecord {
public:
    ScriptedRecord(std::string name, const RecordScript& script, Trace& trace)
        : m_name(std::move(name)), m_script(script), m_trace(trace) {}

    int32_t GetInt32(const char* name, int32_t* value) override;
    int32_t GetInt64(const char* name, int64_t* value) override;
    int32_t GetString(const char* name, char* buffer, int32_t* size) override;

private:
    std::string m_name;
    const RecordScript& m_script;
    Trace& m_trace;
};

} // namespace model
