// The records that the library reads.
#pragma once

#include <cstring>
#include <string>

#include "events/connectionEvent.h"
#include "frame/interfaces.h"
#include "policy/policy.h"

namespace mordhost {

// A record over an event, which it does not own.
class EventRecord final : public IEventRecord {
public:
    explicit EventRecord(const ConnectionEvent& event) : m_event(event) {}

    int32_t GetInt32(const char* name, int32_t* value) override;
    int32_t GetInt64(const char* name, int64_t* value) override;
    int32_t GetString(const char* name, char* buffer, int32_t* size) override;

private:
    const ConnectionEvent& m_event;
};

// A record over a rule, which it does not own.
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
