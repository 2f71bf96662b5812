#include "kit/host/fakeRecord.h"

#include <algorithm>

namespace kit {

namespace {

constexpr int32_t noSuchValue = 2;

} // namespace

FakeRecord& FakeRecord::Int32(const std::string& key, int32_t value) {
    m_int32[key] = {value, 0};
    return *this;
}

FakeRecord& FakeRecord::Int64(const std::string& key, int64_t value) {
    m_int64[key] = {value, 0};
    return *this;
}

FakeRecord& FakeRecord::String(const std::string& key, std::string value) {
    m_strings[key] = std::move(value);
    return *this;
}

FakeRecord& FakeRecord::Behave(const std::string& key, StringBehaviour behaviour) {
    m_behaviours[key] = behaviour;
    return *this;
}

FakeRecord& FakeRecord::FailingInt32(const std::string& key, int32_t value, int32_t result) {
    m_int32[key] = {value, result};
    return *this;
}

FakeRecord& FakeRecord::Unwritten(const std::string& key) {
    m_int32[key] = {0, 0, false};
    m_int64[key] = {0, 0, false};
    return *this;
}

FakeRecord& FakeRecord::Int64WithResult(const std::string& key, int64_t value, int32_t result) {
    m_int64[key] = {value, result};
    return *this;
}

int32_t FakeRecord::GetInt32(const char* name, int32_t* value) {
    Log("GetInt32", name);
    const auto found = m_int32.find(name);
    if (found == m_int32.end()) {
        return noSuchValue;
    }
    if (found->second.writes) {
        *value = found->second.value;
    }
    return found->second.result;
}

int32_t FakeRecord::GetInt64(const char* name, int64_t* value) {
    Log("GetInt64", name);
    const auto found = m_int64.find(name);
    if (found == m_int64.end()) {
        return noSuchValue;
    }
    if (found->second.writes) {
        *value = found->second.value;
    }
    return found->second.result;
}

int32_t FakeRecord::GetString(const char* name, char* buffer, int32_t* size) {
    Log(buffer == nullptr ? "GetString.size" : "GetString", name);
    const auto found = m_strings.find(name);
    if (found == m_strings.end()) {
        return noSuchValue;
    }
    const std::string& text = found->second;
    const auto scripted = m_behaviours.find(name);
    const StringBehaviour behaviour = scripted == m_behaviours.end() ? StringBehaviour{} : scripted->second;
    if (buffer == nullptr) {
        *size = behaviour.firstSize.value_or(static_cast<int32_t>(text.size() + 1));
        return behaviour.firstResult;
    }
    if (behaviour.writes) {
        // Never past the buffer: a test that lies about the size still owns its memory.
        const auto room = static_cast<size_t>(*size);
        const size_t length = std::min(room, text.size());
        std::copy_n(text.data(), length, buffer);
        if (behaviour.writesNul && length < room) {
            buffer[length] = '\0';
        }
    }
    if (behaviour.secondSize) {
        *size = *behaviour.secondSize;
    }
    return behaviour.secondResult;
}

void FakeRecord::Log(const char* operation, const char* key) {
    if (m_calls != nullptr) {
        m_calls->Add(m_name + "." + operation + "(" + key + ")");
    }
}

FakeRecord MakeRule(const std::string& guid, const std::string& type) {
    FakeRecord rule;
    rule.String("guid", guid).String("type", type);
    return rule;
}

} // namespace kit
