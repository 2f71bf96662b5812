// Random policies: what a check says about them is what the real library does.
#include <algorithm>
#include <map>
#include <random>
#include <set>

#include <gtest/gtest.h>

#include "kit/text/runSeed.h"
#include "policy/libraryDocuments.h"
#include "review/documentCheck.h"
#include "review/libraryTrial.h"
#include "review/policyCheck.h"
#include "unit/host/realLibrary.h"

using namespace mordhost;
using namespace mordhostTest;

namespace {

constexpr int cases = 1000;

class RandomDocument {
public:
    explicit RandomDocument(uint64_t seed) : m_random(seed) {}

    std::string AllowList() {
        if (OneOf(40)) {
            return Pick({"[]", "{}", "7", "null", "{\"MID_LIST\": []}"});
        }
        return "{\"mid_list\": " + (OneOf(20) ? Value() : List([this] { return Entry(); })) + Extra() + "}";
    }

    std::string Actions() {
        if (OneOf(40)) {
            return Pick({"[]", "{}", "\"a\"", "{\"a\": true}"});
        }
        std::string rows;
        for (int i = 1 + Below(3); i > 0; --i) {
            rows += (rows.empty() ? "" : ", ") + Key() + ": " + (OneOf(5) ? Value() : Pick({"0", "1", "-1"}));
        }
        return "{" + rows + "}";
    }

    std::string Policy() {
        std::string rules;
        const std::vector<std::string> guids = {"A", "B", "w"};
        for (int i = 0; i < 3; ++i) {
            rules += (i == 0 ? "" : ", ") + std::string("{\"guid\": \"") + guids[static_cast<size_t>(i)] +
                     "\", \"type\": " + Pick({"\"a\"", "\"b\"", "\"web\""}) +
                     (OneOf(2) ? ", \"local_ports\": [" + std::to_string(1 + Below(4)) + "]" : "") + "}";
        }
        return "{\"rules\": [" + rules + "], \"allow_list\": " + AllowList() + ", \"actions\": " + Actions() +
               R"(, "dots": {"A": ["M", "N"], "B": ["N"], "w": ["M"]}})";
    }

private:
    int Below(int limit) { return std::uniform_int_distribution<int>(0, limit - 1)(m_random); }
    bool OneOf(int number) { return Below(number) == 0; }
    std::string Pick(const std::vector<std::string>& texts) {
        return texts[static_cast<size_t>(Below(static_cast<int>(texts.size())))];
    }
    std::string Key() { return Pick({"\"a\"", "\"b\"", "\"w\"", "\"A\"", "\"a\\u0000b\"", "\"\"", "\"c\""}); }
    std::string Value() { return Pick({"1", "null", "[]", "{}", "true", "1.0", "1e0", "\"a\"", "2147483648"}); }
    std::string Extra() { return OneOf(5) ? ", \"mid_list\": []" : OneOf(5) ? ", \"note\": 1" : ""; }

    template <typename Make>
    std::string List(Make make) {
        std::string list;
        for (int i = Below(4); i > 0; --i) {
            list += (list.empty() ? "" : ", ") + make();
        }
        return "[" + list + "]";
    }

    std::string Entry() {
        if (OneOf(8)) {
            return Value();
        }
        const std::string mid = OneOf(8) ? Value() : Pick({"\"M\"", "\"N\"", "\"m\"", "\"M\\u0000x\""});
        const std::string keys = OneOf(8) ? Value() : List([this] { return OneOf(8) ? Value() : Key(); });
        std::string entry = OneOf(10) ? "" : "\"mid\": " + mid;
        entry += OneOf(10) ? "" : (entry.empty() ? "" : ", ") + std::string("\"protocol\": ") + keys;
        entry += OneOf(10) && !entry.empty() ? ", \"mid\": \"N\"" : "";
        return "{" + entry + "}";
    }

    std::mt19937_64 m_random;
};

// The pointers of the parts that can never take effect.
using Pointers = std::set<std::string>;

Pointers PartsWithoutEffect(const std::string& policy) {
    PolicyReading reading = ReadingOf(policy);
    CheckPolicy(reading);
    Pointers pointers;
    for (const Finding& finding : reading.findings.InOrder()) {
        for (const char* const code :
             {"unused-allow-list-key", "duplicate-entry", "unused-action", "shadowed-action", "unknown-dot"}) {
            if (finding.code == code) {
                pointers.insert(finding.pointer);
            }
        }
    }
    return pointers;
}

// The allow list as the library takes it, written again from the entries, without those at `left`.
std::string CanonicalAllowList(const PolicyReading& reading, const Pointers& left) {
    std::string entries;
    for (const AllowListEntry& entry : reading.policy.allowListEntries) {
        if (left.contains(entry.keyPlace.pointer)) {
            continue;
        }
        entries += (entries.empty() ? "" : ", ") + std::string("{\"mid\": \"") + entry.mid + "\", \"protocol\": [\"" +
                   entry.key + "\"]}";
    }
    return "{\"mid_list\": [" + entries + "]}";
}

// As above, of the action table. A row for a type that no rule has keeps the table from being empty.
std::string CanonicalActions(const PolicyReading& reading, const Pointers& left) {
    std::map<std::string, int32_t> rows;
    for (const ActionRow& row : reading.policy.actionRows) {
        rows[row.type] = left.contains(row.place.pointer) ? 0 : row.action;
    }
    std::string text;
    for (const auto& [type, action] : rows) {
        text += (text.empty() ? "\"" : ", \"") + type + "\": " + std::to_string(action);
    }
    return "{" + text + "}";
}

} // namespace

TEST(RandomPolicy, WhatTheCheckRefusesTheLibraryRefuses) {
    RandomDocument random(kit::RunSeed());
    LibraryTrial trial(MORDHOST_LIBRARY_DIRECTORY);
    int refused = 0;
    for (int i = 0; i < cases; ++i) {
        const std::string allowList = random.AllowList();
        const JsonDocument document(SourceText("a.json", allowList));
        Findings findings;
        CheckAllowList(document, document.Root(), findings);
        EXPECT_EQ(trial.TakesAllowList(allowList), findings.Errors() == 0) << allowList;
        const std::string actions = random.Actions();
        const JsonDocument table(SourceText("a.json", actions));
        Findings faults;
        CheckActions(table, table.Root(), faults);
        EXPECT_EQ(trial.TakesActions(actions), faults.Errors() == 0) << actions;
        refused += findings.Errors() + faults.Errors() > 0 ? 1 : 0;
    }
    EXPECT_GT(refused, 0);
    EXPECT_LT(refused, cases);
}

// The entries and rows that the host reads are those that the library takes: a policy with these alone, and without
// those that can never take effect, has the same decisions.
TEST(RandomPolicy, RemovingWhatWarningsNameChangesNoDecision) {
    RandomDocument random(kit::RunSeed() + 1);
    int skipped = 0;
    int whole = 0;
    int withoutEffect = 0;
    for (int i = 0; i < cases; ++i) {
        const std::string policy = random.Policy();
        PolicyReading reading = ReadingOf(policy);
        if (reading.findings.Errors() > 0) {
            continue;
        }
        const Pointers noEffect = PartsWithoutEffect(policy);
        withoutEffect += noEffect.empty() ? 0 : 1;
        std::string cleaned = policy;
        const auto replace = [&cleaned](const std::string& from, const std::string& to) {
            cleaned.replace(cleaned.find(from), from.size(), to);
        };
        replace("\"allow_list\": " + reading.policy.allowList->text,
                "\"allow_list\": " + CanonicalAllowList(reading, noEffect));
        replace("\"actions\": " + reading.policy.actions->text, "\"actions\": " + CanonicalActions(reading, noEffect));
        const PolicyReading clean = ReadingOf(cleaned);
        EXPECT_EQ(clean.policy.skippedParts, 0U) << cleaned;
        EXPECT_EQ(DecisionsOf(policy), DecisionsOf(cleaned)) << policy << '\n' << cleaned;
        ++(reading.policy.skippedParts > 0 ? skipped : whole);
    }
    EXPECT_GT(skipped, cases / 10);
    EXPECT_GT(whole, cases / 20);
    EXPECT_GT(withoutEffect, cases / 10);
}
