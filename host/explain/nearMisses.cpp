#include "explain/nearMisses.h"

#include <algorithm>

#include "policy/ruleConditions.h"
#include "review/similarIds.h"

namespace mordhost {

namespace {

constexpr size_t greatestNumber = 10;

std::string Quoted(const std::string& text) {
    return '"' + text + '"';
}

std::string NameOf(const Rule& rule) {
    return "the rule " + Quoted(rule.guid) + " (" + rule.type + ')';
}

std::string Count(size_t count, const char* noun) {
    return std::to_string(count) + ' ' + noun + (count == 1 ? "" : "s");
}

class Search {
public:
    Search(const Policy& policy, const AllowedMachines& allowed) : m_policy(policy), m_allowed(allowed) {}

    void OfRule(const RuleExplanation& explained) {
        const Rule& rule = m_policy.rules[explained.rule];
        if (explained.held.empty()) {
            OfMissingDot(rule, explained);
        }
        size_t listed = 0;
        for (const std::string& machine : explained.held) {
            if (m_allowed.Find(explained.key, machine) == nullptr && listed++ < greatestNumber) {
                OfMachine(rule, explained, machine);
            }
        }
    }

    // The rules that the event misses by one condition.
    void OfConditions(const ConnectionEvent& event) {
        RuleConditions tested(event);
        for (const Rule& rule : m_policy.rules) {
            if (misses.size() == greatestNumber) {
                return;
            }
            const bool port = rule.localPorts.empty() || tested.LocalPort(rule);
            const bool local = rule.localAddresses.empty() || tested.LocalAddress(rule);
            const bool remote = rule.remoteAddresses.empty() || tested.RemoteAddress(rule);
            if (int{port} + int{local} + int{remote} == 2) {
                const std::string missed = !port    ? "local port " + PortOf(event)
                                           : !local ? "local address " + event.localAddress.value_or("(none)")
                                                    : "remote address " + event.remoteAddress.value_or("(none)");
                Add("condition", NameOf(rule) + " does not include the " + missed, rule.place);
            }
        }
    }

    std::vector<NearMiss> misses;

private:
    static std::string PortOf(const ConnectionEvent& event) {
        return event.localPort ? std::to_string(*event.localPort) : "(none)";
    }

    void Add(std::string_view code, std::string text, const DocumentPlace& place) {
        misses.push_back({code, std::move(text), place});
    }

    void OfMissingDot(const Rule& rule, const RuleExplanation& explained) {
        if (!explained.allowed->empty()) {
            Add("no-dot",
                "the allow list has " + Count(explained.allowed->size(), "machine") + " for " + NameOf(rule) +
                    ", which has no dot",
                explained.allowed->front()->keyPlace);
        }
        const std::string form = WithoutCaseAndBlanks(rule.guid);
        for (const auto& [guid, place] : m_policy.dotPlaces) {
            if (guid != rule.guid && WithoutCaseAndBlanks(guid) == form) {
                Add("similar-guid", "there is a dot for " + Quoted(guid) + ", which is not the guid of " + NameOf(rule),
                    place);
            }
        }
    }

    void OfMachine(const Rule& rule, const RuleExplanation& explained, const std::string& machine) {
        Add("not-allowed",
            "the dot of " + NameOf(rule) + " names the machine " + Quoted(machine) +
                ", which the allow list does not have under the key " + Quoted(explained.key),
            explained.dot == nullptr ? rule.place : *explained.dot);
        const AllowedMachines::Entries& others = m_allowed.Of(machine);
        for (size_t i = 0; i < std::min(others.size(), greatestNumber); ++i) {
            Add("other-key",
                "the allow list has the machine " + Quoted(machine) + " under the key " + Quoted(others[i]->key),
                others[i]->keyPlace);
        }
        const AllowedMachines::Entries similar = m_allowed.Similar(machine);
        for (size_t i = 0; i < std::min(similar.size(), greatestNumber); ++i) {
            Add("similar-machine",
                "the allow list has the machine " + Quoted(similar[i]->mid) + ", which is not " + Quoted(machine),
                similar[i]->midPlace);
        }
    }

    const Policy& m_policy;
    const AllowedMachines& m_allowed;
};

} // namespace

std::vector<NearMiss> FindNearMisses(const Policy& policy, const AllowedMachines& allowed,
                                     const Explanation& explanation) {
    Search search(policy, allowed);
    if (explanation.rules.empty()) {
        search.OfConditions(explanation.decision->event);
    } else if (explanation.wasAsked) {
        for (const RuleExplanation& rule : explanation.rules) {
            if (rule.outcome) { // the library looked at it
                search.OfRule(rule);
            }
        }
    }
    return std::move(search.misses);
}

} // namespace mordhost
