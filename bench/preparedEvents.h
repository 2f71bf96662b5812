// The events of a recording in memory, for the library alone: everything that mordhost computes for an event and that
// the library asks for is computed in advance.
#pragma once

#include <cstdint>
#include <deque>
#include <filesystem>
#include <set>
#include <string>
#include <vector>

#include "frame/interfaces.h"
#include "policy/policy.h"

namespace bench {

// One event for the library to decide.
struct PreparedEvent {
    IEventRecord* record;
    IEventRecord** rules;
    uint32_t ruleCount;
    int32_t queryCode;
    const char* answer; // null if there is none
    uint32_t reply;     // what the library replied when the event was prepared
};

class PreparedEvents {
public:
    // Reads the recording in `folder` and lets `receiver`, which must not be initialised, decide it once with the dots
    // of the policy, as mordhost does. Throws what mordhost throws.
    PreparedEvents(const std::filesystem::path& folder, IMordRev& receiver);
    ~PreparedEvents();
    PreparedEvents(const PreparedEvents&) = delete;
    PreparedEvents& operator=(const PreparedEvents&) = delete;

    const mordhost::Policy& Policy() const { return m_policy; }
    const std::vector<PreparedEvent>& Asked() const { return m_asked; }
    size_t Count() const { return m_count; } // of all events, including those without a rule

private:
    class Event;
    class Rule;

    void Prepare(const std::filesystem::path& events, IMordRev& receiver);

    mordhost::Policy m_policy;
    std::vector<Rule> m_rules;
    std::deque<Event> m_records;
    std::set<std::vector<IEventRecord*>> m_choices; // of rules, without duplicates
    std::set<std::string> m_answers;                // likewise
    std::vector<PreparedEvent> m_asked;
    size_t m_count = 0;
};

} // namespace bench
