// The full path of one decision.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "decide/decision.h"
#include "policy/policy.h"

namespace mordhost {

// A condition of a rule that the event meets.
struct MetCondition {
    std::string_view name; // "local_ports"
    std::string value;     // of the event: "445"
    std::string range;     // the element that contains it: "440-450"
    Location where;        // of the element; without a file if no document has the rule
};

// One rule that applies.
struct RuleExplanation {
    size_t rule = 0;                      // index in the policy
    std::vector<MetCondition> conditions; // empty: the rule has none and applies to every event
    std::string key;                      // under which the allow list must have a machine
    const DocumentPlace* dot = nullptr;   // of the dot in the policy's documents; null if they have none
    std::vector<std::string> held;        // machine ids of the dot when the library asked
    // The first entry of each machine that is allowed under the key; not null. There may be very many.
    const std::vector<const AllowListEntry*>* allowed = nullptr;
    std::vector<const AllowListEntry*> both; // those of them whose machine is in `held`
    std::optional<ReasonCode> outcome;       // what the library found; nullopt if it did not look at the rule
    std::string machine;                     // the machine id that matched; empty for none
};

// A fact that comes close to an allow.
struct NearMiss {
    std::string_view code; // in kebab-case; never changes its meaning
    std::string text;      // one sentence without a period
    const DocumentPlace* place = nullptr;
};

// A change of the policy, or of the dots, under which the library allows the event.
struct Opening {
    std::string text; // an instruction without a period
    std::string verdict;
    std::optional<DocumentPlace> place; // of what changes, if a document has it
};

// Refers to the policy, the decision and the Explainer, which must outlive it.
struct Explanation {
    const Decision* decision = nullptr;
    bool wasAsked = false; // whether the dot store was asked and answered
    std::vector<RuleExplanation> rules;
    uint32_t defenderMode = 0;
    const DocumentPlace* defenderModePlace = nullptr; // null: the default of the library
    bool modeHasEnded = false;                        // another mode was in force until a time in the past
    uint32_t exceptionMode = 0;
    const DocumentPlace* exceptionModePlace = nullptr; // null: the default of the library
    const ActionRow* action = nullptr;                 // the row of the first rule's type; null if there is none
    bool isFlagged = false;                            // whether the event requires the reply 2 instead of 1
    std::vector<NearMiss> nearMisses;                  // of a block and of an event without a rule
};

} // namespace mordhost
