#include "model/scriptedRecord.h"

#include <algorithm>

namespace model {
namespace {

constexpr int32_t noSuchValue = 2;

template <typename Number>
int32_t Answer(const RecordScript& script, const char* name, Number* value) {
    const NumberScript* const number = script.numbers.Find(name);
    if (number == nullptr) {
        return noSuchValue;
    }
    if (number->writes) {
        *value = static_cast<Number>(number->value);
    }
    return number->result;
}

} // namespace

int32_t ScriptedRecord::GetInt32(const char* name, int32_t* value) {
    m_trace.Add({m_name, ".GetInt32 ", name});
    return Answer(m_script, name, value);
}

int32_t ScriptedRecord::GetInt64(const char* name, int64_t* value) {
    m_trace.Add({m_name, ".GetInt64 ", name, " preset to ", Decimal(*value)});
    return Answer(m_script, name, value);
}

int32_t ScriptedRecord::GetString(const char* name, char* buffer, int32_t* size) {
    m_trace.Add({m_name, ".GetString ", name, buffer == nullptr ? " null size " : " buffer size ", Decimal(*size)});
    const TextScript* const text = m_script.texts.Find(name);
    if (text == nullptr) {
        return noSuchValue;
    }
    const TextScript& script = *text;
    if (buffer == nullptr) {
        *size = script.firstSize;
        return script.firstResult;
    }
    const size_t room = script.firstSize > 0 ? static_cast<size_t>(script.firstSize) : 0;
    std::copy_n(script.bytes.data(), std::min(room, script.bytes.size()), buffer);
    if (script.secondSize) {
        *size = *script.secondSize;
    }
    return script.secondResult;
}

} // namespace model
