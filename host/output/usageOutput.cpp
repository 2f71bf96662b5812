#include "output/usageOutput.h"

#include <string>

#include "output/cleanText.h"
#include "output/counted.h"
#include "output/jsonText.h"
#include "output/placeMembers.h"

namespace mordhost {

namespace {

struct PartNames {
    PolicyPart part;
    const char* heading;
    const char* member; // of the summary
    const char* code;
};

constexpr PartNames partNames[] = {
    {PolicyPart::rule, "rules", "rules", "rule"},
    {PolicyPart::allowListEntry, "allow-list entries", "allow_list_entries", "allow-list-entry"},
    {PolicyPart::actionRow, "action rows", "action_rows", "action-row"},
    {PolicyPart::dot, "dots", "dots", "dot"},
};

// An empty text is visible, too.
std::string Shown(std::string_view text) {
    return text.empty() ? "\"\"" : CleanText(text);
}

std::string Description(const PartUse& part) {
    switch (part.part) {
    case PolicyPart::rule:
        return Shown(part.guid) + " of type " + Shown(part.type) + ", applied to " + Counted(part.applied, "event");
    case PolicyPart::allowListEntry:
        return Shown(part.machine) + " for " + Shown(part.key);
    case PolicyPart::actionRow:
        return Shown(part.type) + ": " + std::to_string(part.action);
    default:
        return Shown(part.guid);
    }
}

void WriteText(std::ostream& out, const PolicyUse& use, bool all) {
    for (const PartNames& names : partNames) {
        const UseShare share = use.Share(names.part);
        out << names.heading << ": " << share.used << " of " << share.total << " used";
        if (share.total > 0) {
            out << " (" << share.used * 100 / share.total << " %)";
        }
        out << '\n';
        for (const PartUse& part : use.Parts()) {
            if (part.part == names.part && (all || !part.IsUsed())) {
                out << "    " << CleanText(part.place->where.Text()) << ": " << Description(part)
                    << (part.IsUsed() ? ", used by " + Counted(part.events, "event") : ", unused") << '\n';
            }
        }
    }
    out << Counted(use.Events(), "event") << '\n';
}

std::string PartObject(const PartUse& part) {
    std::string text = "{";
    JsonMembers members(text);
    members.Text("part", partNames[static_cast<size_t>(part.part)].code);
    AppendPlace(members, *part.place);
    switch (part.part) {
    case PolicyPart::rule:
        members.Text("guid", part.guid);
        members.Text("type", part.type);
        members.Count("applied", part.applied);
        break;
    case PolicyPart::allowListEntry:
        members.Text("machine", part.machine);
        members.Text("key", part.key);
        break;
    case PolicyPart::actionRow:
        members.Text("type", part.type);
        members.Number("action", part.action);
        break;
    case PolicyPart::dot:
        members.Text("guid", part.guid);
        break;
    }
    members.Count("events", part.events);
    return text + '}';
}

std::string SummaryObject(const PolicyUse& use) {
    std::string text = "{";
    JsonMembers members(text);
    members.Count("events", use.Events());
    for (const PartNames& names : partNames) {
        const UseShare share = use.Share(names.part);
        members.Name(names.member) += '{';
        JsonMembers counts(text);
        counts.Count("used", share.used);
        counts.Count("total", share.total);
        text += '}';
    }
    return text + '}';
}

} // namespace

void WriteUse(std::ostream& out, const PolicyUse& use, bool all, OutputFormat format) {
    if (format == OutputFormat::text) {
        WriteText(out, use, all);
        return;
    }
    const bool lines = format == OutputFormat::jsonl;
    out << (lines ? "" : "{\"parts\":[");
    const char* before = lines ? "" : "\n";
    for (const PartUse& part : use.Parts()) {
        if (all || !part.IsUsed()) {
            out << before << TerminalSafe(PartObject(part)) << (lines ? "\n" : "");
            before = lines ? "" : ",\n";
        }
    }
    out << (lines ? "{\"summary\":" : "\n],\"summary\":") << SummaryObject(use) << "}\n";
}

} // namespace mordhost
