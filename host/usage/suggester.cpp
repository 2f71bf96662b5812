#include "usage/suggester.h"

#include <algorithm>
#include <utility>

#include "frame/values.h"
#include "policy/ruleKey.h"

namespace mordhost {

namespace {

constexpr size_t mostAlternatives = 3;

// How often a pass puts a proposed entry in force at once. The library reads the whole list each time.
constexpr size_t mostChanges = 100;

bool IsAllowed(const Decision& decision) {
    return decision.asked && decision.reply != REPLY_BLOCK;
}

std::string PairOf(const std::string& key, const std::string& machine) {
    return key + '\0' + machine;
}

std::vector<AllowListEntry> EntriesOf(const Suggestions& suggestions) {
    std::vector<AllowListEntry> entries;
    for (const Suggestion& suggestion : suggestions.entries) {
        entries.push_back({suggestion.machine, suggestion.key, {}, {}});
    }
    return entries;
}

} // namespace

Suggestions Suggester::Run() {
    DecideAsIs();
    do {
        const size_t known = m_result.entries.size();
        DecideWithEntries();
        if (m_result.entries.size() > known) {
            continue;
        }
        m_isGrowing = false;
        if (!RemoveUseless()) {
            break;
        }
    } while (true);
    return std::move(m_result);
}

void Suggester::DecideAsIs() {
    m_session.Restart({});
    m_recording.Rewind();
    ConnectionEvent event;
    while (m_recording.Next(event)) {
        const Decision& decision = m_session.Decide(std::move(event));
        m_verdicts.Write(IsAllowed(decision));
        m_result.allowedBefore += IsAllowed(decision) ? 1 : 0;
        Propose(decision);
    }
}

void Suggester::DecideWithEntries() {
    Suggestions& result = m_result;
    for (Suggestion& entry : result.entries) {
        entry.events = {};
    }
    result.alsoAllowed = {};
    result.noLongerAllowed = {};
    result.events = 0;
    result.allowedAfter = 0;
    result.withoutRule = 0;
    result.blocked.clear();
    m_used.assign(result.entries.size(), false);
    m_session.Restart(EntriesOf(result));
    m_verdicts.Rewind();
    m_recording.Rewind();
    ConnectionEvent event;
    size_t known = result.entries.size();
    size_t changes = 0;
    while (m_recording.Next(event)) {
        const bool before = m_verdicts.Next();
        Compare(m_session.Decide(std::move(event)), before);
        // With the entry in force, the events after it propose what they still lack, which saves passes.
        if (result.entries.size() > known && changes++ < mostChanges) {
            known = result.entries.size();
            m_session.SetAdded(EntriesOf(result));
        }
    }
    m_verdicts.RequireEnd();
}

void Suggester::Compare(const Decision& decision, bool before) {
    ++m_result.events;
    m_result.withoutRule += decision.asked ? 0 : 1;
    if (!IsAllowed(decision)) {
        if (decision.asked) {
            ++m_result.blocked[decision.reason.code];
        }
        if (before) {
            m_result.noLongerAllowed.Add(m_recording.File(), decision.event, m_most);
        }
        Propose(decision);
        return;
    }
    ++m_result.allowedAfter;
    EventSample* sample = &m_result.alsoAllowed;
    const std::vector<RuleOutcome>& rules = decision.reason.rules;
    if (!rules.empty() && rules.back().code == ReasonCode::machineAllowed) {
        const auto entry = m_indexes.find(PairOf(KeyOf(m_policy.rules[rules.back().rule]), rules.back().machine));
        // An entry that was proposed in this pass is not in the list yet.
        if (entry != m_indexes.end() && entry->second < m_used.size()) {
            m_used[entry->second] = true;
            sample = &m_result.entries[entry->second].events;
        }
    }
    if (!before) {
        sample->Add(m_recording.File(), decision.event, m_most);
    }
}

void Suggester::Propose(const Decision& decision) {
    if (!m_isGrowing || !decision.asked || IsAllowed(decision)) {
        return;
    }
    const std::set<std::string>* chosen = nullptr;
    const std::string* key = nullptr;
    for (const RuleOutcome& outcome : decision.reason.rules) {
        if (outcome.code != ReasonCode::noAllowedMachine && outcome.code != ReasonCode::allowListEmpty) {
            continue;
        }
        const Rule& rule = m_policy.rules[outcome.rule];
        const std::set<std::string>* const machines = m_session.Machines(rule.guid);
        if (machines == nullptr || machines->empty()) {
            continue;
        }
        const auto isProposed = [&](const std::string& machine) {
            return m_indexes.contains(PairOf(KeyOf(rule), machine));
        };
        if (std::any_of(machines->begin(), machines->end(), isProposed)) {
            return;
        }
        if (chosen == nullptr) {
            chosen = machines;
            key = &KeyOf(rule);
        }
    }
    if (chosen == nullptr) {
        return;
    }
    Suggestion suggestion;
    suggestion.machine = *chosen->begin();
    suggestion.key = *key;
    for (auto other = std::next(chosen->begin());
         other != chosen->end() && suggestion.alternatives.size() < mostAlternatives; ++other) {
        suggestion.alternatives.push_back(*other);
    }
    m_indexes.emplace(PairOf(suggestion.key, suggestion.machine), m_result.entries.size());
    m_result.entries.push_back(std::move(suggestion));
}

// Returns whether the recording must be decided again: whether one of the removed entries allowed an event, though one
// that is allowed without it.
bool Suggester::RemoveUseless() {
    bool changes = false;
    size_t kept = 0;
    for (size_t index = 0; index < m_result.entries.size(); ++index) {
        if (m_result.entries[index].events.Count() == 0) {
            changes = changes || m_used[index];
        } else {
            if (kept != index) {
                m_result.entries[kept] = std::move(m_result.entries[index]);
            }
            ++kept;
        }
    }
    m_result.entries.resize(kept);
    Index();
    return changes;
}

void Suggester::Index() {
    m_indexes.clear();
    for (const Suggestion& entry : m_result.entries) {
        m_indexes.emplace(PairOf(entry.key, entry.machine), m_indexes.size());
    }
}

} // namespace mordhost
