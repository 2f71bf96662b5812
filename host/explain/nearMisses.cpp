#include "explain/nearMisses.h"

#include <algorithm>

#include "policy/ruleConditions.h"

namespace mordhost {

namespace {

constexpr size_t greatestNumber = 10;

std::string Quoted(const std::string& text) {
    return '"' + text + '"';
}

std::string NameOf(const Rule& rule) {
    return "the rule " + Quoted(rule.guid) + " (" + rule.type + ')';
}

class Search {
public:
    Search(const Policy& policy, const PolicyIndex& index) : m_policy(policy), m_index(index) {}

    void OfRule(const RuleExplanation& explained) {
        const Rule& rule = m_policy.rules[explained.rule];
        if (explained.held.empty()) {
            OfMissingDot(rule, explained);
            return;
        }
        std::vector<const std::string*> absent;
        for (const std::string& machine : explained.held) {
            if (m_index.FindAllowed(explained.key, machine) == nullptr) {
                absent.push_back(&machine);
            }
        }
        if (!absent.empty()) {
            OfAbsentMachines(rule, explained, absent);
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
        misses.push_back({code, std::move(text), &place});
    }

    void OfMissingDot(const Rule& rule, const RuleExplanation& explained) {
        const size_t count = explained.allowed->size();
        if (count > 0) {
            Add("no-dot",
                "the allow list has " + std::to_string(count) + (count == 1 ? " machine" : " machines") + " for " +
                    NameOf(rule) + ", which has no dot",
                explained.allowed->front()->keyPlace);
        }
        for (const auto* dot : m_index.SimilarDots(rule.guid)) {
            Add("similar-guid",
                "there is a dot for " + Quoted(dot->first) + ", which is not the guid of " + NameOf(rule), dot->second);
        }
    }

    void OfAbsentMachines(const Rule& rule, const RuleExplanation& explained,
                          const std::vector<const std::string*>& absent) {
        const size_t listed = std::min(absent.size(), greatestNumber);
        std::string names;
        for (size_t i = 0; i < listed; ++i) {
            names += (i == 0 ? "" : ", ") + Quoted(*absent[i]);
        }
        if (absent.size() > listed) {
            names += " and " + std::to_string(absent.size() - listed) + " more";
        }
        Add("not-allowed",
            "the dot of " + NameOf(rule) + " names " + names + ", and the allow list does not have " +
                (absent.size() == 1 ? "it" : "them") + " under the key " + Quoted(explained.key),
            explained.dot == nullptr ? rule.place : *explained.dot);
        for (size_t i = 0; i < listed; ++i) {
            OfMachine(*absent[i]);
        }
    }

    void OfMachine(const std::string& machine) {
        const PolicyIndex::Entries& others = m_index.AllowedOf(machine);
        for (size_t i = 0; i < std::min(others.size(), greatestNumber); ++i) {
            Add("other-key",
                "the allow list has the machine " + Quoted(machine) + " under the key " + Quoted(others[i]->key),
                others[i]->keyPlace);
        }
        const PolicyIndex::Entries similar = m_index.SimilarAllowed(machine);
        for (size_t i = 0; i < std::min(similar.size(), greatestNumber); ++i) {
            Add("similar-machine",
                "the allow list has the machine " + Quoted(similar[i]->mid) + ", which is not " + Quoted(machine),
                similar[i]->midPlace);
        }
    }

    const Policy& m_policy;
    const PolicyIndex& m_index;
};

} // namespace

std::vector<NearMiss> FindNearMisses(const Policy& policy, const PolicyIndex& index, const Explanation& explanation) {
    Search search(policy, index);
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
