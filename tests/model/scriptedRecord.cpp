#include "model/scriptedRecord.h"

#include <algorithm>

namespace model {
namespace {

constexpr int32_t noSuchValue = 2;

template <typename Number>
int32_t Answer(const RecordScript& script, const char* name, Number* value) {
    const auto number = script.numbers.find(name);
    if (number == script.numbers.end()) {
        return noSuchValue;
    }
    if (number->second.writes) {
        *value = static_cast<Number>(number->second.value);
    }
    return number->second.result;
}

} // namespace

int32_t ScriptedRecord::GetInt32(const char* name, int32_t* value) {
    m_trace.Add(m_name + ".GetInt32 " + name);
    return Answer(m_script, name, value);
}

int32_t ScriptedRecord::GetInt64(const char* name, int64_t* value) {
    m_trace.Add(m_name + ".GetInt64 " + name + " preset to " + std::to_string(*value));
    return Answer(m_script, name, value);
}

int32_t ScriptedRecord::GetString(const char* name, char* buffer, int32_t* size) {
    m_trace.Add(m_name + ".GetString " + name + (buffer == nullptr ? " null" : " buffer") + " size " +
                std::to_string(*size));
    const auto text = m_script.texts.find(name);
    if (text == m_script.texts.end()) {
        return noSuchValue;
    }
    const TextScript& script = text->second;
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
