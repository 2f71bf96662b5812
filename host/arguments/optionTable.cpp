#include "arguments/optionTable.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "output/format.h"

namespace mordhost {

namespace {

constexpr unsigned year = 31536000; // seconds

OptionEntry Flag(std::string_view name, std::string_view help, std::string_view more = {}) {
    OptionEntry entry;
    entry.name = name;
    entry.help = help;
    entry.more = more;
    return entry;
}

OptionEntry WithValue(std::string_view name, ValueKind kind, std::string_view value, std::string_view help,
                      std::string_view more = {}) {
    OptionEntry entry = Flag(name, help, more);
    entry.kind = kind;
    entry.value = value;
    return entry;
}

OptionEntry Choice(std::string_view name, std::string_view value, const std::initializer_list<NamedValue>& choices,
                   std::string_view help, std::string_view more) {
    OptionEntry entry = WithValue(name, ValueKind::choice, value, help, more);
    entry.choices = &choices;
    return entry;
}

OptionEntry NoLog() {
    OptionEntry entry = Flag("--no-log", "Disable the library's log records: faster, but without reasons",
                             "In decision records every reason has the code unknown and no rule has an outcome.");
    entry.excludes = "--log";
    return entry;
}

OptionEntry Seconds() {
    OptionEntry entry =
        WithValue("--seconds", ValueKind::number, "N", "Stop after N seconds instead of at an interruption");
    entry.least = 1;
    entry.greatest = year;
    return entry;
}

OptionEntry Flagged() {
    OptionEntry entry = WithValue("--flagged", ValueKind::text, "RANGE",
                                  "Set the flag 0x10 in events whose remote end is in RANGE; may be repeated",
                                  "RANGE is an address or a range such as 192.0.2.0/24.");
    entry.repeats = true;
    return entry;
}

OptionEntry Libraries() {
    return WithValue("--libraries", ValueKind::directory, "DIR",
                     "Load ZelkBase, Ferrocore and mordRev from DIR instead of the default directory",
                     "The default is lib beside the directory of the program; on Windows, the directory of the "
                     "program.");
}

// The options of the commands that decide events.
std::vector<OptionEntry> RunEntries() {
    return {
        Choice(
            "--format", "FORMAT", formatNames, "Write the decisions as text, json or jsonl; default: text",
            "text is a table. json is one document with all decisions and the summary. jsonl is one object per line, "
            "written as it is decided; the last one is the summary."),
        Flag("--no-duration", "Leave out all durations, so that the outputs of two runs can be compared"),
        WithValue("--reports", ValueKind::file, "FILE", "Write the library's reports to FILE"),
        WithValue("--log", ValueKind::file, "FILE", "Write the library's log records to FILE"),
        NoLog(),
        WithValue(
            "--dots", ValueKind::file, "FILE", "Keep the remaining dots in FILE, rewritten at each deletion",
            "The file is replaced as a whole. Links are followed; owner and permissions are kept. Devices, pipes, "
            "sockets and directories are refused."),
        Choice("--dots-down", "FAILURE", failureNames,
               "Make every query for dots fail with network-error, query-error or broken-answer",
               "This has priority over the failures that the policy prescribes."),
        Libraries(),
    };
}

std::vector<OptionEntry> Joined(std::vector<OptionEntry> entries, const std::vector<OptionEntry>& more) {
    entries.insert(entries.end(), more.begin(), more.end());
    return entries;
}

constexpr PositionalEntry policyArgument = {"POLICY", ValueKind::file, "The policy document"};

CommandEntry Replay() {
    return {
        "replay",
        "Decide recorded connection events under a policy",
        "Each row appears when its event is decided. The first thousand events of a file are read in advance: if one "
        "of "
        "their lines is invalid, nothing is decided.",
        {policyArgument, {"EVENTS", ValueKind::file, "The events, one per line; - reads the standard input"}},
        Joined(RunEntries(), {WithValue("--programs", ValueKind::directory, "DIR",
                                        "Start the policy's programs from DIR instead of the directory of mordhost")}),
        false,
    };
}

CommandEntry Explain() {
    const auto number = [](std::string_view name, std::string_view help) {
        OptionEntry entry = WithValue(name, ValueKind::number, "N", help);
        entry.greatest = std::numeric_limits<unsigned>::max();
        return entry;
    };
    OptionEntry from = WithValue("--from", ValueKind::text, "ADDRESS[:PORT]",
                                 "Explain one event with this remote end; needs --to, and takes no EVENTS",
                                 "An IPv6 address with a port is in brackets: [2001:db8::7]:4000.");
    OptionEntry event = WithValue("--event", ValueKind::text, "NAME|LINE",
                                  "Explain the events of this name, or the one in this line; default: all",
                                  "The events before it are decided too, because they use up dots. For a block the "
                                  "changes that would allow it are listed, each tried with the library.");
    event.excludes = "--from";
    return {
        "explain",
        "Show the full path of a decision: rules, ids, modes, and what would allow it",
        "For each rule that applies it shows the condition that is met, the protocol key, the ids held, the ids "
        "allowed and those in both; then modes, action table and flag; each with its place in the documents. For a "
        "block it lists the nearest misses.",
        {policyArgument,
         {"EVENTS", ValueKind::file, "The events, one per line; - reads the standard input", Times::optional}},
        {Choice("--format", "FORMAT", formatNames, "Write the explanations as text, json or jsonl; default: text",
                "json is one array of objects. jsonl is one object per line."),
         std::move(event), std::move(from),
         WithValue("--to", ValueKind::text, "ADDRESS:PORT", "The local end of the event of --from"),
         number("--pid", "The process id of the event of --from"),
         number("--flags", "The flags of the event of --from; 0x10 asks for the reply allow (flagged)"),
         Flag("--records", "Add the library's log records"),
         Flag("--no-duration", "Leave out all durations, so that the outputs of two runs can be compared"),
         Choice("--dots-down", "FAILURE", failureNames,
                "Make every query for dots fail with network-error, query-error or broken-answer",
                "This has priority over the failures that the policy prescribes."),
         Libraries()},
        false,
    };
}

constexpr PositionalEntry eventsArgument = {"EVENTS", ValueKind::file,
                                            "The events, one per line; - reads the standard input"};

CommandEntry Diff() {
    return {
        "diff",
        "Compare the decisions of two policies on recorded events",
        "Each event whose verdict or reason differs is a row, with both reasons and their places in the documents. A "
        "difference is marked if it follows from a dot that was deleted under one policy only. The exit code is 1 if a "
        "verdict differs.",
        {{"OLD", ValueKind::file, "The old policy document"},
         {"NEW", ValueKind::file, "The new policy document"},
         eventsArgument},
        {Choice("--format", "FORMAT", formatNames, "Write the differences as text, json or jsonl; default: text",
                "json is one document with all differences and the summary. jsonl is one object per line, written as "
                "it is decided; the last one is the summary."),
         WithValue("--programs", ValueKind::directory, "DIR",
                   "Start the policies' programs from DIR instead of the directory of mordhost"),
         Libraries()},
        false,
    };
}

CommandEntry Rehearse() {
    return {
        "rehearse",
        "Decide recorded events under every failure and every mode",
        "The failures are network-error, query-error, broken-answer, and no-dots, an answer that holds nothing; none "
        "is the run without a failure. Each row is an event whose verdict differs from that of a replay under some "
        "combination. Each combination has separate dots. The summary counts the verdicts of each combination.",
        {policyArgument, eventsArgument},
        {Choice("--format", "FORMAT", formatNames, "Write the events as text, json or jsonl; default: text",
                "json is one document with all events that change and the summary. jsonl is one object per line, "
                "written as it is decided; the last one is the summary."),
         Flag("--summary", "Write the summary without the events"),
         WithValue("--programs", ValueKind::directory, "DIR",
                   "Start the policy's programs from DIR instead of the directory of mordhost"),
         Libraries()},
        false,
    };
}

CommandEntry Check() {
    const auto document = [](std::string_view name, std::string_view help) {
        OptionEntry entry = WithValue(name, ValueKind::file, "FILE", help);
        entry.repeats = true;
        return entry;
    };
    return {
        "check",
        "Find the faults of a policy or of a document for the library",
        "An error is what mordhost or the library refuses. A warning is what the library silently skips, or what can "
        "never take effect.",
        {{"POLICY", ValueKind::file, "The policy documents; - reads the standard input", Times::any}},
        {Choice("--format", "FORMAT", findingFormatNames,
                "Write the findings as text, json, jsonl, junit, tap, sarif or github; default: text",
                "junit is the XML of JUnit, tap is the Test Anything Protocol 13, sarif is SARIF 2.1.0, github is "
                "workflow commands."),
         Flag("--strict", "Exit with code 1 if there are warnings"),
         document("--allow-list", "Check the allow list in FILE; may be repeated"),
         document("--action-table", "Check the action table in FILE; may be repeated"),
         document("--answer", "Check the query result in FILE; may be repeated"),
         document("--report", "Check the handling report in FILE; may be repeated"), Libraries()},
        false,
    };
}

constexpr PositionalEntry recordingArgument = {
    "EVENTS", ValueKind::file, "The events, one per line, in one or more files; - reads the standard input",
    Times::any};

CommandEntry Unused() {
    return {
        "unused",
        "List the parts of a policy that a recording never used",
        "The parts are rules, allow-list entries, action rows and dots. Without the unused ones the verdicts on the "
        "recording are the same. Several files of events are one recording.",
        {policyArgument, recordingArgument},
        {Choice("--format", "FORMAT", formatNames, "Write the parts as text, json or jsonl; default: text",
                "json is one document with the parts and the summary. jsonl is one object per line; the last one is "
                "the summary."),
         Flag("--all", "List the used parts too, with the number of events that used them"),
         Flag("--strict", "Exit with code 1 if a part is unused"), Libraries()},
        false,
    };
}

CommandEntry Suggest() {
    OptionEntry most = WithValue("--most", ValueKind::number, "N", "Name at most N events per entry; default: 3");
    most.greatest = 1'000'000'000;
    return {
        "suggest",
        "Suggest the allow-list entries that a recording needs",
        "With a policy: the missing entries, each with the events that become allowed through it, as the library "
        "decides them. Without one: a draft with the addresses of the remote ends in place of the machine ids, and "
        "port-N in place of the protocol keys. The events are read at least twice; what is not a regular file is "
        "copied to a temporary file.",
        {recordingArgument},
        {WithValue("--policy", ValueKind::file, "POLICY", "Suggest the entries that this policy lacks"),
         Choice("--format", "FORMAT", formatNames, "Write the entries as text, json or jsonl; default: text",
                "json is an allow list whose entries have further members. jsonl is one entry per line; the last line "
                "is the summary."),
         most, Libraries()},
        false,
    };
}

CommandEntry Record() {
    return {
        "record",
        "Write this machine's inbound connections as events",
        "Each new inbound TCP connection of this machine, and its end, is a line of events.",
        {},
        {Choice("--format", "FORMAT", formatNames, "Write the events as text, json or jsonl; default: jsonl",
                "jsonl is a file of events for replay. json is one array of events. text is one line for people per "
                "event."),
         WithValue("--out", ValueKind::file, "FILE", "Write to FILE instead of the standard output"), Seconds(),
         Flagged()},
        true,
    };
}

CommandEntry Watch() {
    return {
        "watch",
        "Decide this machine's inbound connections as they come; enforces nothing",
        "It runs until it is interrupted.",
        {policyArgument},
        Joined(RunEntries(), {Seconds(), Flagged()}),
        true,
    };
}

} // namespace

const std::vector<OptionEntry>& CommonOptions() {
    static const std::vector<OptionEntry> options = {Flag("--help", "Show the arguments and options"),
                                                     Flag("--version", "Show the version")};
    return options;
}

const std::vector<CommandEntry>& CommandTable() {
    static const std::vector<CommandEntry> commands = {Replay(), Explain(), Diff(),   Rehearse(), Check(),
                                                       Unused(), Suggest(), Record(), Watch()};
    return commands;
}

const CommandEntry* FindCommand(std::string_view name) {
    const auto& table = CommandTable();
    const auto found = std::find_if(table.begin(), table.end(), [&](const auto& entry) { return entry.name == name; });
    return found == table.end() ? nullptr : &*found;
}

const OptionEntry* FindOption(const CommandEntry& command, std::string_view name) {
    const auto found = std::find_if(command.options.begin(), command.options.end(),
                                    [&](const auto& entry) { return entry.name == name; });
    return found == command.options.end() ? nullptr : &*found;
}

} // namespace mordhost
