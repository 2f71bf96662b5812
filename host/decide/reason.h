// The reason of a decision, derived from the library's log records.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "decide/reasonCode.h"
#include "policy/policy.h"

namespace mordhost {

// What the library found for one rule.
struct RuleOutcome {
    size_t rule = 0; // index in the policy
    ReasonCode code = ReasonCode::unknown;
    std::string machine; // the machine id that matched; empty for none

    bool operator==(const RuleOutcome&) const = default;
};

struct Reason {
    ReasonCode code = ReasonCode::unknown;
    std::string text;                    // one phrase; empty for ReasonCode::unknown
    std::optional<ReasonCode> overruled; // why the library blocked, if `code` changed the block to an allow
    // The rules that the library looked at, in the order of the event. The library stops at the first that allows.
    std::vector<RuleOutcome> rules;
};

// The rules of one event. Does not own the policy's rules and the indexes.
struct EventRules {
    const std::vector<Rule>& all;
    const std::vector<size_t>& selected; // indexes of those that apply
};

// Writes the reason to `reason` and keeps the memory of its members. `messages` are those of the records of one event.
// The reason is unknown if none of the messages is known.
void FindReason(const std::vector<std::string_view>& messages, const EventRules& rules, Reason& reason);

} // namespace mordhost
