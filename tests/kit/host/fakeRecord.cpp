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

FakeRecord& FakeRecord::OtherNumbers(int32_t value) {
    m_otherNumber = value;
    return *this;
}

FakeRecord& FakeRecord::OtherStrings(std::string value) {
    m_otherString = std::move(value);
    return *this;
}

template <typename Number>
int32_t FakeRecord::Scripted<Number>::Read(Number& number) const {
    if (writes) {
        number = value;
    }
    return result;
}

int32_t FakeRecord::GetInt32(const char* name, int32_t* value) {
    Log("GetInt32", name);
    if (const auto found = m_int32.find(name); found != m_int32.end()) {
        return found->second.Read(*value);
    }
    return m_otherNumber ? Scripted<int32_t>{*m_otherNumber, 0}.Read(*value) : noSuchValue;
}

int32_t FakeRecord::GetInt64(const char* name, int64_t* value) {
    Log("GetInt64", name);
    if (const auto found = m_int64.find(name); found != m_int64.end()) {
        return found->second.Read(*value);
    }
    return m_otherNumber ? Scripted<int64_t>{*m_otherNumber, 0}.Read(*value) : noSuchValue;
}

int32_t FakeRecord::GetString(const char* name, char* buffer, int32_t* size) {
    Log(buffer == nullptr ? "GetString.size" : "GetString", name);
    const auto found = m_strings.find(name);
    if (found == m_strings.end() && !m_otherString) {
        return noSuchValue;
    }
    const std::string& text = found == m_strings.end() ? *m_otherString : found->second;
    const auto scripted = m_behaviours.find(name);
    const StringBehaviour behaviour = scripted == m_behaviours.end() ? StringBehaviour{} : scripted->second;
    if (buffer == nullptr) {
        *size = behaviour.firstSize.value_or(static_cast<int32_t>(text.size() + 1));
        return behaviour.firstResult;
    }
    if (behaviour.writes) {
        // Never past the buffer, even if the test reports a wrong size.
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

FakeRecord MakeFullRecord(const std::string& guid, const std::string& type) {
    FakeRecord record = MakeRule(guid, type);
    record.Int32("pid", 4).Int32("flags", 0).OtherNumbers(1).OtherStrings(fullRecordText);
    return record;
}

} // namespace kit
