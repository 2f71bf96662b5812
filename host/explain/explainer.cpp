#include "explain/explainer.h"

#include <algorithm>

#include "explain/nearMisses.h"
#include "frame/values.h"
#include "policy/ruleConditions.h"
#include "policy/ruleKey.h"

namespace mordhost {

namespace {

std::string TextOf(const PortRange& range) {
    const std::string first = std::to_string(range.first);
    return range.first == range.last ? first : first + '-' + std::to_string(range.last);
}

template <typename Range>
void AddIfMet(std::string_view name, const std::optional<size_t>& element, const std::vector<Range>& ranges,
              const std::vector<Location>& places, const std::string& value, std::vector<MetCondition>& conditions) {
    if (element) {
        conditions.push_back(
            {name, value, TextOf(ranges[*element]), *element < places.size() ? places[*element] : Location{}});
    }
}

std::vector<MetCondition> MetConditions(const Rule& rule, const ConnectionEvent& event) {
    RuleConditions tested(event);
    std::vector<MetCondition> conditions;
    const ConditionPlaces& places = rule.conditionPlaces;
    AddIfMet("local_ports", tested.LocalPort(rule), rule.localPorts, places.localPorts,
             std::to_string(event.localPort.value_or(0)), conditions);
    AddIfMet("local_addresses", tested.LocalAddress(rule), rule.localAddresses, places.localAddresses,
             event.localAddress.value_or(""), conditions);
    AddIfMet("remote_addresses", tested.RemoteAddress(rule), rule.remoteAddresses, places.remoteAddresses,
             event.remoteAddress.value_or(""), conditions);
    return conditions;
}

bool IsBlock(const Decision& decision) {
    return decision.asked && decision.reply == REPLY_BLOCK;
}

} // namespace

Explanation Explainer::Explain(const Decision& decision, const HeldDots& held) const {
    Explanation explanation;
    explanation.decision = &decision;
    explanation.wasAsked = held.WasAsked();
    for (const size_t rule : decision.rules) {
        explanation.rules.push_back(ExplainRule(decision, rule, held));
    }
    for (const RuleOutcome& outcome : decision.reason.rules) {
        const auto explained = std::find_if(explanation.rules.begin(), explanation.rules.end(),
                                            [&outcome](const auto& rule) { return rule.rule == outcome.rule; });
        if (explained != explanation.rules.end()) {
            explained->outcome = outcome.code;
            explained->machine = outcome.machine;
        }
    }
    ExplainModes(decision, explanation);
    if (!decision.asked || IsBlock(decision)) {
        explanation.nearMisses = FindNearMisses(m_policy, m_index, explanation);
    }
    return explanation;
}

RuleExplanation Explainer::ExplainRule(const Decision& decision, size_t index, const HeldDots& held) const {
    const Rule& rule = m_policy.rules[index];
    RuleExplanation explained;
    explained.rule = index;
    explained.conditions = MetConditions(rule, decision.event);
    explained.key = KeyOf(rule);
    const auto dot = m_policy.dotPlaces.find(rule.guid);
    explained.dot = dot == m_policy.dotPlaces.end() ? nullptr : &dot->second;
    explained.held = held.MachinesOf(rule.guid);
    explained.allowed = &m_index.AllowedUnder(explained.key);
    for (const std::string& machine : explained.held) {
        if (const AllowListEntry* const entry = m_index.FindAllowed(explained.key, machine)) {
            explained.both.push_back(entry);
        }
    }
    return explained;
}

void Explainer::ExplainModes(const Decision& decision, Explanation& explanation) const {
    explanation.defenderMode = decision.mode.value_or(m_policy.defenderMode.value_or(MODE_ACTION_TABLE));
    if (m_policy.defenderMode) {
        explanation.modeHasEnded = m_policy.defenderModeEnd && decision.mode && *decision.mode != m_policy.defenderMode;
        explanation.defenderModePlace =
            explanation.modeHasEnded ? &m_policy.defenderModeEnd->place : &m_policy.defenderModePlace;
    }
    explanation.exceptionMode = m_policy.exceptionMode.value_or(EXCEPTION_BLOCK);
    explanation.exceptionModePlace = m_policy.exceptionMode ? &m_policy.exceptionModePlace : nullptr;
    if (!decision.rules.empty()) {
        explanation.action = m_index.ActionOf(m_policy.rules[decision.rules.front()].type);
    }
    explanation.isFlagged = (decision.event.flags.value_or(0) & EVENT_FLAG_REPLY_TWO) != 0;
}

} // namespace mordhost
