// The event and rule records that the library reads.
#pragma once

#include <cstring>
#include <string>

#include "frame/interfaces.h"
#include "policy/connectionEvent.h"
#include "policy/policy.h"

namespace mordhost {

// Refers to an event and does not own it.
class EventRecord final : public IEventRecord {
public:
    explicit EventRecord(const ConnectionEvent& event) : m_event(event) {}

    int32_t GetInt32(const char* name, int32_t* value) override;
    int32_t GetInt64(const char* name, int64_t* value) override;
    int32_t GetString(const char* name, char* buffer, int32_t* size) override;

private:
    const ConnectionEvent& m_event;
};

// Refers to a rule and does not own it.
class RuleRecord final : public IEventRecord {
public:
    explicit RuleRecord(const Rule& rule) : m_rule(rule) {}

    int32_t GetInt32(const char* name, int32_t* value) override;
    int32_t GetInt64(const char* name, int64_t* value) override;
    int32_t GetString(const char* name, char* buffer, int32_t* size) override;

private:
    const Rule& m_rule;
};

} // namespace mordhost
