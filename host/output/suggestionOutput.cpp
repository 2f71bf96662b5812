#include "output/suggestionOutput.h"

#include <string>
#include <vector>

#include "output/cleanText.h"
#include "output/counted.h"
#include "output/jsonText.h"

namespace mordhost {

namespace {

std::string Shown(std::string_view text) {
    return text.empty() ? "\"\"" : CleanText(text);
}

void WriteEvents(std::ostream& out, const EventSample& sample) {
    for (const NamedEvent& event : sample.First()) {
        out << "    " << CleanText(event.file) << ':' << event.line;
        if (!event.name.empty()) {
            out << ' ' << CleanText(event.name);
        }
        if (!event.remoteAddress.empty()) {
            out << " from " << CleanText(event.remoteAddress);
        }
        if (event.localPort) {
            out << " to port " << *event.localPort;
        }
        out << '\n';
    }
    const size_t more = sample.Count() - sample.First().size();
    if (more > 0 && !sample.First().empty()) {
        out << "    and " << more << " more\n";
    }
}

void WriteEntries(std::ostream& out, const std::vector<Suggestion>& entries) {
    for (const Suggestion& entry : entries) {
        out << Shown(entry.machine) << " for " << Shown(entry.key) << " allows "
            << Counted(entry.events.Count(), "event") << '\n';
        WriteEvents(out, entry.events);
        if (!entry.alternatives.empty()) {
            out << "    the dot also names ";
            const char* before = "";
            for (const std::string& machine : entry.alternatives) {
                out << before << Shown(machine);
                before = ", ";
            }
            out << '\n';
        }
    }
}

void WriteOtherEvents(std::ostream& out, const std::string& heading, const EventSample& sample) {
    if (sample.Count() > 0) {
        out << heading << ": " << Counted(sample.Count(), "event") << '\n';
        WriteEvents(out, sample);
    }
}

void AppendEvents(std::string& text, const EventSample& sample) {
    text += '{';
    JsonMembers members(text);
    members.Count("count", sample.Count());
    members.Name("first") += '[';
    for (const NamedEvent& event : sample.First()) {
        text += text.back() == '[' ? "{" : ",{";
        JsonMembers one(text);
        one.Text("file", event.file);
        one.Count("line", event.line);
        one.TextOrNull("name", event.name);
        one.TextOrNull("remote_addr_ip", event.remoteAddress);
        one.NumberOrNull("local_addr_port", event.localPort);
        text += '}';
    }
    text += ']';
    members.Count("more", sample.Count() - sample.First().size());
    text += '}';
}

std::string EntryObject(const Suggestion& entry) {
    std::string text = "{";
    JsonMembers members(text);
    members.Text("mid", entry.machine);
    members.Name("protocol") += '[';
    AppendJsonString(text, entry.key);
    text += ']';
    members.Name("alternatives") += '[';
    for (const std::string& machine : entry.alternatives) {
        text += text.back() == '[' ? "" : ",";
        AppendJsonString(text, machine);
    }
    text += ']';
    AppendEvents(members.Name("events"), entry.events);
    return text + '}';
}

std::string SummaryOf(const Suggestions& suggestions) {
    std::string text = "{";
    JsonMembers members(text);
    members.Count("events", suggestions.events);
    members.Count("allowed_before", suggestions.allowedBefore);
    members.Count("allowed_after", suggestions.allowedAfter);
    AppendEvents(members.Name("also_allowed"), suggestions.alsoAllowed);
    AppendEvents(members.Name("no_longer_allowed"), suggestions.noLongerAllowed);
    members.Count("without_rule", suggestions.withoutRule);
    members.Name("blocked") += '{';
    JsonMembers blocked(text);
    for (const auto& [code, count] : suggestions.blocked) {
        blocked.Count(NameOf(code), count);
    }
    return text + "}}";
}

std::string SummaryOf(const Draft& draft) {
    std::string text = "{";
    JsonMembers members(text);
    members.Count("events", draft.events);
    members.Count("allowed", draft.allowed);
    members.Count("disconnects", draft.disconnects);
    members.Count("incomplete", draft.incomplete);
    return text + '}';
}

void WriteJson(std::ostream& out, const std::vector<Suggestion>& entries, const std::string& summary, bool lines) {
    out << (lines ? "" : "{\"mid_list\":[");
    const char* before = lines ? "" : "\n";
    for (const Suggestion& entry : entries) {
        out << before << TerminalSafe(EntryObject(entry)) << (lines ? "\n" : "");
        before = lines ? "" : ",\n";
    }
    out << (lines ? "{\"summary\":" : "\n],\"summary\":") << TerminalSafe(summary) << "}\n";
}

} // namespace

void WriteSuggestions(std::ostream& out, const Suggestions& suggestions, OutputFormat format) {
    if (format != OutputFormat::text) {
        WriteJson(out, suggestions.entries, SummaryOf(suggestions), format == OutputFormat::jsonl);
        return;
    }
    WriteEntries(out, suggestions.entries);
    WriteOtherEvents(out, "also allowed, because a dot is left for them", suggestions.alsoAllowed);
    WriteOtherEvents(out, "no longer allowed, because an event before them uses their dot",
                     suggestions.noLongerAllowed);
    out << Counted(suggestions.entries.size(), "missing entry", "missing entries") << "; of "
        << Counted(suggestions.events, "event") << ' ' << suggestions.allowedBefore << " allowed without and "
        << suggestions.allowedAfter << " with " << (suggestions.entries.size() == 1 ? "it" : "them") << '\n';
    if (suggestions.withoutRule > 0) {
        out << "without a rule: " << suggestions.withoutRule << '\n';
    }
    for (const auto& [code, count] : suggestions.blocked) {
        out << "still blocked, " << NameOf(code) << ": " << count << '\n';
    }
}

void WriteDraft(std::ostream& out, const Draft& draft, OutputFormat format) {
    if (format != OutputFormat::text) {
        WriteJson(out, draft.entries, SummaryOf(draft), format == OutputFormat::jsonl);
        return;
    }
    WriteEntries(out, draft.entries);
    out << Counted(draft.entries.size(), "draft entry", "draft entries") << " for " << draft.allowed << " of "
        << Counted(draft.events, "event") << "; " << Counted(draft.disconnects, "disconnect") << ", "
        << draft.incomplete << " without remote address or local port\n";
    if (!draft.entries.empty()) {
        out << "Replace each address by the id of the machine, and each port-N by the protocol key of the rule.\n";
    }
}

} // namespace mordhost
