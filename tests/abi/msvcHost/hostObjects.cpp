#include "abi/msvcHost/hostObjects.h"

namespace {

constexpr int32_t delivered = 0;
constexpr int32_t bufferNeeded = 201;
constexpr int32_t noSuchValue = 1;
constexpr uint32_t unusedSlotCalled = 70;

char answer[] = R"({"GUID-1": {"value": 1, "mid": {}}, "GUID-2": {"value": 1, "mid": {"MID-7": 0}}})";

} // namespace

void Record::Fail(uint32_t slot) {
    PrintLine("must not be called: slot ", slot, " of a record");
    ExitProcess(unusedSlotCalled);
}

const NamedValue* Record::Find(const char* name) const {
    for (size_t i = 0; i < m_count; ++i) {
        if (SameText(m_values[i].name, name)) {
            return &m_values[i];
        }
    }
    return nullptr;
}

int32_t Record::GetInt32(const char* name, int32_t* value) {
    const NamedValue* const found = Find(name);
    if (found == nullptr || found->text != nullptr) {
        return noSuchValue;
    }
    *value = static_cast<int32_t>(found->number);
    return delivered;
}

int32_t Record::GetInt64(const char* name, int64_t* value) {
    const NamedValue* const found = Find(name);
    if (found == nullptr || found->text != nullptr) {
        return noSuchValue;
    }
    *value = found->number;
    return delivered;
}

int32_t Record::GetString(const char* name, char* buffer, int32_t* size) {
    const NamedValue* const found = Find(name);
    if (found == nullptr || found->text == nullptr) {
        return noSuchValue;
    }
    const size_t needed = strlen(found->text) + 1;
    if (buffer == nullptr) {
        *size = static_cast<int32_t>(needed);
        return bufferNeeded;
    }
    memcpy(buffer, found->text, needed);
    return delivered;
}

void Host::Fail(uint32_t slot) {
    PrintLine("must not be called: slot ", slot, " of the host");
    ExitProcess(unusedSlotCalled);
}

int32_t Host::DeleteDot(const char* guid, const char* mid, int32_t kind, const char* type) {
    PrintLine("host: DeleteDot ", guid, ", ", mid, ", ", static_cast<uint32_t>(kind), ", ", type);
    return 0;
}

int32_t Host::QueryDot(const char* guidJson, const char* mid, char** result) {
    PrintLine("host: QueryDot ", guidJson, ", ", mid, ", ", *result == nullptr ? "null" : "not null");
    *result = answer;
    return 0;
}

int32_t Host::FreeResult(char* result) {
    PrintLine("host: FreeResult ", result == answer ? "the answer" : "something else");
    return 0;
}

int32_t Sink::Report(int32_t kind, const char* text, uint32_t size) {
    PrintLine("sink: Report ", static_cast<uint32_t>(kind), ", ", text, ", ",
              size == strlen(text) ? "its length" : "another length");
    return 0;
}
