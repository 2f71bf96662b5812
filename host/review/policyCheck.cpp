#include "review/policyCheck.h"

#include <algorithm>
#include <set>
#include <unordered_set>

#include "frame/values.h"
#include "policy/modeNames.h"
#include "policy/ruleKey.h"
#include "review/ruleCover.h"
#include "review/similarIds.h"

namespace mordhost {

namespace {

std::string Quoted(const std::string& text) {
    return '"' + text + '"';
}

class PolicyCheck {
public:
    explicit PolicyCheck(PolicyReading& reading) : m_reading(reading), m_policy(reading.policy) {
        for (const Rule& rule : m_policy.rules) {
            m_ruleKeys.insert(KeyOf(rule));
            m_types.insert(rule.type);
            m_guids.insert(rule.guid);
        }
        for (const AllowListEntry& entry : m_policy.allowListEntries) {
            m_allowKeys.insert(entry.key);
        }
    }

    void Check(UtcTime now) {
        CheckMode(now);
        CheckRules();
        CheckAllowList();
        CheckActions();
        CheckDots();
        CheckSimilarIds();
    }

private:
    void Warn(const DocumentPlace& place, const char* code, const std::string& message, const char* expected,
              const std::string& fix) {
        m_reading.Warn(place, {code, 0, message, expected, fix});
    }

    void CheckMode(UtcTime now) {
        const auto mode = m_policy.defenderMode;
        if (mode != MODE_EMERGENCY && mode != MODE_ALLOW_AFTER_DECISION) {
            return;
        }
        if (!m_policy.defenderModeEnd) {
            Warn(m_policy.defenderModePlace, "mode-without-end",
                 "the mode " + Quoted(NameOf(*mode, defenderModes)) + " lets all connections pass, and never ends",
                 "an end of this mode", R"(write {"mode": ..., "until": "2026-11-20T12:00:00Z"})");
        } else if (m_policy.defenderModeEnd->until <= now) {
            Warn(m_policy.defenderModeEnd->place, "mode-ended",
                 "the mode " + Quoted(NameOf(*mode, defenderModes)) + " has ended; the mode " +
                     Quoted(NameOf(m_policy.defenderModeEnd->then, defenderModes)) + " is in force",
                 "a time in the future", "remove the mode or set a later end");
        }
    }

    void CheckRules() {
        for (const Rule& rule : m_policy.rules) {
            if (m_allowKeys.contains(KeyOf(rule))) {
                continue;
            }
            if (rule.type == "web") {
                Warn(rule.place, "web-rule-without-key",
                     "no machine can match this web rule, because the allow list has no key " + Quoted(rule.guid) +
                         ": the key of a web rule is its guid",
                     "an allow-list entry whose key is the guid", "add the guid to \"protocol\" of the machines");
            } else {
                Warn(rule.place, "rule-without-machine",
                     "no machine can match this rule, because the allow list has no key " + Quoted(rule.type),
                     "an allow-list entry whose key is the type", "add the type to \"protocol\" of the machines");
            }
        }
    }

    void CheckAllowList() {
        std::set<std::pair<std::string_view, std::string_view>> seen;
        for (const AllowListEntry& entry : m_policy.allowListEntries) {
            if (!m_ruleKeys.contains(entry.key)) {
                const bool isWeb = entry.key == "web" && m_types.contains("web");
                Warn(entry.keyPlace, "unused-allow-list-key",
                     "this key has no effect, because no rule has the key " + Quoted(entry.key) +
                         (isWeb ? ": the key of a web rule is its guid" : ""),
                     "the type of a rule, or the guid of a web rule", "correct the key or remove it");
            }
            if (!seen.emplace(entry.mid, entry.key).second) {
                Warn(entry.keyPlace, "duplicate-entry",
                     "this key has no effect, because the allow list has the machine " + Quoted(entry.mid) +
                         " under this key already",
                     "each machine once under a key", "remove the key");
            }
        }
    }

    void CheckActions() {
        for (const ActionRow& row : m_policy.actionRows) {
            if (!m_types.contains(row.type)) {
                Warn(row.place, "unused-action",
                     "this row has no effect, because no rule has the type " + Quoted(row.type), "the type of a rule",
                     "correct the type or remove the row");
            } else if (row.action != 0 && IsNeverFirst(row.type)) {
                Warn(row.place, "shadowed-action",
                     "this row has no effect: the library takes the action of the first rule of an event, and an "
                     "earlier rule of another type applies to all connections of each rule of the type " +
                         Quoted(row.type),
                     "a rule of this type that can be the first of an event", "reorder the rules or remove the row");
            }
        }
    }

    // Whether an earlier rule of another type covers each rule of the type.
    bool IsNeverFirst(const std::string& type) const {
        for (auto rule = m_policy.rules.begin(); rule != m_policy.rules.end(); ++rule) {
            const bool canBeFirst =
                rule->type == type && std::none_of(m_policy.rules.begin(), rule,
                                                   [&](const Rule& r) { return r.type != type && Covers(r, *rule); });
            if (canBeFirst) {
                return false;
            }
        }
        return true;
    }

    void CheckDots() {
        for (const auto& [guid, place] : m_policy.dotPlaces) {
            if (!m_guids.contains(guid)) {
                Warn(place, "unknown-dot", "this dot has no effect, because no rule has the guid " + Quoted(guid),
                     "the guid of a rule", "correct the guid or remove the dot");
            }
        }
    }

    void CheckSimilarIds() {
        SimilarIds keys;
        SimilarIds guids;
        SimilarIds machines;
        for (const Rule& rule : m_policy.rules) {
            CheckSimilar(keys, rule.type, rule.place);
            CheckSimilar(guids, rule.guid, rule.place);
            if (rule.type == "web") {
                CheckSimilar(keys, rule.guid, rule.place);
            }
        }
        for (const AllowListEntry& entry : m_policy.allowListEntries) {
            CheckSimilar(keys, entry.key, entry.keyPlace);
            CheckSimilar(machines, entry.mid, entry.midPlace);
        }
        for (const ActionRow& row : m_policy.actionRows) {
            CheckSimilar(keys, row.type, row.place);
        }
        for (const auto& [guid, mids] : m_policy.dots) {
            CheckSimilar(guids, guid, m_policy.dotPlaces.at(guid));
            for (const std::string& mid : mids) {
                CheckSimilar(machines, mid, m_policy.dotPlaces.at(guid));
            }
        }
    }

    void CheckSimilar(SimilarIds& ids, const std::string& id, const DocumentPlace& place) {
        if (const std::string* const other = ids.Add(id)) {
            Warn(place, "similar-id",
                 Quoted(id) + " and " + Quoted(*other) + " are different ids, but differ in case or blanks only",
                 "the same bytes for the same id", "write both in the same way, if they mean the same");
        }
    }

    PolicyReading& m_reading;
    const Policy& m_policy;
    std::unordered_set<std::string_view> m_ruleKeys;
    std::unordered_set<std::string_view> m_allowKeys;
    std::unordered_set<std::string_view> m_types;
    std::unordered_set<std::string_view> m_guids;
};

} // namespace

void CheckPolicy(PolicyReading& reading, UtcTime now) {
    PolicyCheck(reading).Check(now);
}

} // namespace mordhost
