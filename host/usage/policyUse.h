// Which parts of a policy the decisions on a recording used.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "decide/decision.h"
#include "policy/policy.h"

namespace mordhost {

enum class PolicyPart { rule, allowListEntry, actionRow, dot };

constexpr size_t policyPartCount = 4;

// A part of a policy and the number of events that used it. The texts and the place belong to the policy.
struct PartUse {
    PolicyPart part = PolicyPart::rule;
    size_t index = 0; // in Policy::rules, allowListEntries or actionRows; of a dot: in document order
    const DocumentPlace* place = nullptr;
    std::string_view guid;    // of a rule and a dot
    std::string_view type;    // of a rule and a row
    std::string_view machine; // of an entry
    std::string_view key;     // of an entry
    int32_t action = 0;       // of a row
    size_t events = 0;        // that used it
    size_t applied = 0;       // of a rule: events to which it applied

    bool IsUsed() const { return events > 0; }
};

// The parts of one kind.
struct UseShare {
    size_t used = 0;
    size_t total = 0;
};

// An event uses
//   - the rule that matched; if none matched, the first of its rules, whose type selects the action row and without
//     which no rule might apply;
//   - the allow-list entry that allowed the machine: of several equal entries, the first;
//   - the dot that named the machine;
//   - the action row that the library looked up because no rule allowed the event, whatever its action: of several rows
//     of the type, the last, which is the one in force.
// The verdicts on the same events are the same under the policy without any or all of the parts that no event used.
//
// For use by one thread. The memory does not depend on the number of events.
class PolicyUse {
public:
    // `policy` must outlive this and must not change.
    explicit PolicyUse(const Policy& policy);

    // Adds a decision under the policy. The library must have written log records: the match comes from them.
    void Add(const Decision& decision);

    // All rules, then all entries, rows and dots, each in document order, with repetitions.
    const std::vector<PartUse>& Parts() const { return m_parts; }

    UseShare Share(PolicyPart part) const;

    // The number of decisions added.
    size_t Events() const { return m_events; }

private:
    // Allows look-ups by string_view.
    struct Hash : std::hash<std::string_view> {
        using is_transparent = void;
    };
    using Indexes = std::unordered_map<std::string, size_t, Hash, std::equal_to<>>;

    static constexpr size_t none = static_cast<size_t>(-1);

    void AddRules(const Policy& policy);
    void AddEntries(const Policy& policy);
    void AddRows(const Policy& policy);
    void AddDots(const Policy& policy);
    PartUse& AddPart(PolicyPart part, size_t index, const DocumentPlace& place);

    void Use(size_t part);
    void UseMatch(const RuleOutcome& match);

    const std::vector<Rule>& m_rules;
    std::vector<PartUse> m_parts;
    Indexes m_entries;               // of the first of equal entries in m_parts, by key, NUL and machine
    std::vector<size_t> m_dotOfRule; // the indexes in m_parts, or none
    std::vector<size_t> m_rowOfRule; // as above: the row in force for the rule's type
    size_t m_events = 0;
    std::string m_pair; // of a look-up; a member, to reuse its memory
};

} // namespace mordhost
