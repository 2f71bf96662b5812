#include "usage/policyUse.h"

#include <algorithm>

#include "frame/values.h"
#include "policy/ruleKey.h"

namespace mordhost {

namespace {

const RuleOutcome* FindMatch(const Decision& decision) {
    const std::vector<RuleOutcome>& rules = decision.reason.rules;
    return !rules.empty() && rules.back().code == ReasonCode::machineAllowed ? &rules.back() : nullptr;
}

// Whether the library looked up the action row of the first rule, and the row could change the reply.
bool LooksUpRow(const Decision& decision) {
    const bool isInForce = decision.mode.value_or(MODE_ACTION_TABLE) == MODE_ACTION_TABLE;
    return isInForce && (decision.reply == REPLY_BLOCK || decision.reason.code == ReasonCode::actionTable);
}

} // namespace

PolicyUse::PolicyUse(const Policy& policy) : m_rules(policy.rules) {
    AddRules(policy);
    AddEntries(policy);
    AddRows(policy);
    AddDots(policy);
}

PartUse& PolicyUse::AddPart(PolicyPart part, size_t index, const DocumentPlace& place) {
    PartUse& added = m_parts.emplace_back();
    added.part = part;
    added.index = index;
    added.place = &place;
    return added;
}

void PolicyUse::AddRules(const Policy& policy) {
    for (size_t index = 0; index < policy.rules.size(); ++index) {
        const Rule& rule = policy.rules[index];
        PartUse& added = AddPart(PolicyPart::rule, index, rule.place);
        added.guid = rule.guid;
        added.type = rule.type;
    }
}

void PolicyUse::AddEntries(const Policy& policy) {
    for (size_t index = 0; index < policy.allowListEntries.size(); ++index) {
        const AllowListEntry& entry = policy.allowListEntries[index];
        m_entries.emplace(entry.key + '\0' + entry.mid, m_parts.size());
        PartUse& added = AddPart(PolicyPart::allowListEntry, index, entry.keyPlace);
        added.machine = entry.mid;
        added.key = entry.key;
    }
}

void PolicyUse::AddRows(const Policy& policy) {
    std::unordered_map<std::string_view, size_t> rows;
    for (size_t index = 0; index < policy.actionRows.size(); ++index) {
        const ActionRow& row = policy.actionRows[index];
        rows[row.type] = m_parts.size();
        PartUse& added = AddPart(PolicyPart::actionRow, index, row.place);
        added.type = row.type;
        added.action = row.action;
    }
    for (const Rule& rule : policy.rules) {
        const auto row = rows.find(rule.type);
        m_rowOfRule.push_back(row == rows.end() ? none : row->second);
    }
}

void PolicyUse::AddDots(const Policy& policy) {
    static const DocumentPlace unknown;
    std::vector<std::pair<const DocumentPlace*, std::string_view>> dots;
    for (const auto& [guid, mids] : policy.dots) {
        const auto place = policy.dotPlaces.find(guid);
        dots.emplace_back(place == policy.dotPlaces.end() ? &unknown : &place->second, guid);
    }
    std::stable_sort(dots.begin(), dots.end(),
                     [](const auto& one, const auto& other) { return one.first->offset < other.first->offset; });
    std::unordered_map<std::string_view, size_t> parts;
    for (const auto& [place, guid] : dots) {
        parts.emplace(guid, m_parts.size());
        AddPart(PolicyPart::dot, parts.size() - 1, *place).guid = guid;
    }
    for (const Rule& rule : policy.rules) {
        const auto dot = parts.find(rule.guid);
        m_dotOfRule.push_back(dot == parts.end() ? none : dot->second);
    }
}

void PolicyUse::Add(const Decision& decision) {
    ++m_events;
    for (const size_t rule : decision.rules) {
        ++m_parts[rule].applied;
    }
    if (!decision.asked) {
        return;
    }
    if (const RuleOutcome* const match = FindMatch(decision)) {
        UseMatch(*match);
        return;
    }
    const size_t first = decision.rules.front();
    Use(first);
    if (LooksUpRow(decision)) {
        Use(m_rowOfRule[first]);
    }
}

void PolicyUse::UseMatch(const RuleOutcome& match) {
    m_pair = KeyOf(m_rules[match.rule]);
    m_pair += '\0';
    m_pair += match.machine;
    const auto entry = m_entries.find(m_pair);
    Use(match.rule);
    Use(entry == m_entries.end() ? none : entry->second);
    Use(m_dotOfRule[match.rule]);
}

void PolicyUse::Use(size_t part) {
    if (part != none) {
        ++m_parts[part].events;
    }
}

UseShare PolicyUse::Share(PolicyPart part) const {
    UseShare share;
    for (const PartUse& candidate : m_parts) {
        if (candidate.part == part) {
            ++share.total;
            share.used += candidate.IsUsed() ? 1 : 0;
        }
    }
    return share;
}

} // namespace mordhost
