#include "output/explanationJson.h"

#include <algorithm>

#include "output/jsonText.h"
#include "output/placeMembers.h"
#include "policy/modeNames.h"

namespace mordhost {

namespace {

// Appends an array. `append` appends one element.
template <typename Elements, typename Append>
void AppendArray(std::string& out, const Elements& elements, size_t count, Append append) {
    out += '[';
    for (size_t i = 0; i < count; ++i) {
        out += i == 0 ? "" : ",";
        append(elements[i]);
    }
    out += ']';
}

// Appends the place as an object, or null.
void AppendPlaceOrNull(std::string& out, const DocumentPlace* place) {
    if (place == nullptr || place->where.file.empty()) {
        out += "null";
        return;
    }
    out += '{';
    JsonMembers members(out);
    AppendPlace(members, *place);
    out += '}';
}

void AppendCondition(std::string& out, const MetCondition& condition) {
    out += '{';
    JsonMembers members(out);
    members.Text("name", condition.name);
    members.Text("value", condition.value);
    members.Text("range", condition.range);
    members.TextOrNull("file", condition.where.file);
    members.Count("line", condition.where.line);
    members.Count("column", condition.where.column);
    out += '}';
}

void AppendEntry(std::string& out, const AllowListEntry& entry) {
    out += '{';
    JsonMembers members(out);
    members.Text("machine", entry.mid);
    AppendPlace(members, entry.keyPlace);
    out += '}';
}

void AppendRule(std::string& out, const RuleExplanation& explained, const Rule& rule, bool wasAsked) {
    out += '{';
    JsonMembers members(out);
    members.Text("guid", rule.guid);
    members.Text("type", rule.type);
    AppendPlaceOrNull(members.Name("place"), &rule.place);
    AppendArray(members.Name("conditions"), explained.conditions, explained.conditions.size(),
                [&out](const MetCondition& condition) { AppendCondition(out, condition); });
    members.Text("key", explained.key);
    AppendPlaceOrNull(members.Name("dot"), explained.dot);
    if (wasAsked) {
        AppendArray(members.Name("held"), explained.held, explained.held.size(),
                    [&out](const std::string& machine) { AppendJsonString(out, machine); });
    } else {
        members.Null("held");
    }
    const auto& allowed = *explained.allowed;
    members.Count("allowed_count", allowed.size());
    AppendArray(members.Name("allowed"), allowed, std::min(allowed.size(), greatestAllowedMachines),
                [&out](const AllowListEntry* entry) { AppendEntry(out, *entry); });
    AppendArray(members.Name("both"), explained.both, explained.both.size(),
                [&out](const AllowListEntry* entry) { AppendEntry(out, *entry); });
    if (explained.outcome) {
        members.Text("outcome", NameOf(*explained.outcome));
    } else {
        members.Null("outcome");
    }
    out += '}';
}

void AppendMode(std::string& out, const std::string& name, const DocumentPlace* place) {
    out += '{';
    JsonMembers members(out);
    members.Text("mode", name);
    AppendPlaceOrNull(members.Name("place"), place); // null: the default of the library
    out += '}';
}

void AppendAction(std::string& out, const ActionRow* row) {
    if (row == nullptr) {
        out += "null";
        return;
    }
    out += '{';
    JsonMembers members(out);
    members.Text("type", row->type);
    members.Number("action", row->action);
    AppendPlaceOrNull(members.Name("place"), &row->place);
    out += '}';
}

void AppendNearMiss(std::string& out, const NearMiss& miss) {
    out += '{';
    JsonMembers members(out);
    members.Text("code", miss.code);
    members.Text("text", miss.text);
    AppendPlaceOrNull(members.Name("place"), miss.place);
    out += '}';
}

void AppendOpening(std::string& out, const Opening& opening) {
    out += '{';
    JsonMembers members(out);
    members.Text("change", opening.text);
    members.Text("verdict", opening.verdict);
    AppendPlaceOrNull(members.Name("place"), opening.place ? &*opening.place : nullptr);
    out += '}';
}

void AppendRecordTexts(std::string& out, const WrittenRecords& records) {
    size_t begin = 0;
    AppendArray(out, records.ends, records.ends.size(), [&](size_t end) {
        AppendJsonString(out, std::string_view(records.text).substr(begin, end - begin));
        begin = end;
    });
}

} // namespace

void AppendExplanationJson(std::string& out, const Explanation& explanation, const Policy& policy,
                           const DecisionRecords& records, const ExplanationExtras& extras) {
    out += '{';
    JsonMembers whole(out);
    records.Append(whole.Name("decision"), *explanation.decision);
    whole.Name("explanation") += '{';
    JsonMembers members(out);
    AppendArray(members.Name("rules"), explanation.rules, explanation.rules.size(), [&](const RuleExplanation& rule) {
        AppendRule(out, rule, policy.rules[rule.rule], explanation.wasAsked);
    });
    AppendMode(members.Name("defender_mode"), NameOf(explanation.defenderMode, defenderModes),
               explanation.defenderModePlace);
    members.Flag("mode_has_ended", explanation.modeHasEnded);
    AppendMode(members.Name("exception_mode"), NameOf(explanation.exceptionMode, exceptionModes),
               explanation.exceptionModePlace);
    AppendAction(members.Name("action"), explanation.action);
    members.Flag("flagged", explanation.isFlagged);
    AppendArray(members.Name("near_misses"), explanation.nearMisses, explanation.nearMisses.size(),
                [&out](const NearMiss& miss) { AppendNearMiss(out, miss); });
    if (extras.openings != nullptr) {
        AppendArray(members.Name("changes"), *extras.openings, extras.openings->size(),
                    [&out](const Opening& opening) { AppendOpening(out, opening); });
    }
    if (extras.records) {
        AppendRecordTexts(members.Name("records"), explanation.decision->log);
    }
    out += "}}";
}

} // namespace mordhost
