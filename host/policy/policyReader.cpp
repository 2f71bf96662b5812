#include "policy/policyReader.h"

#include <limits>
#include <utility>

#include "document/jsonAccess.h"
#include "frame/values.h"
#include "policy/libraryDocuments.h"
#include "policy/modeNames.h"
#include "policy/ruleReader.h"
#include "policy/timestamp.h"
#include "system/fileError.h"
#include "system/filePath.h"
#include "system/inputStream.h"
#include "system/sha256.h"

namespace mordhost {

namespace {

constexpr std::string_view fromTheMachine = "from the machine";

// The path of a file that is relative to the policy.
std::filesystem::path BesidePolicy(const SourceText& policy, const std::filesystem::path& file) {
    return PathOf(policy.Name()).parent_path() / file;
}

// A part of the policy that is either inline or the name of a file.
struct Part {
    const JsonDocument& policy;
    const JsonNode& node;
    std::string what;
    bool isDots = false;
};

SourceText ReadNamedFile(const Part& part, Policy& policy) {
    const SourceText& source = part.policy.Source();
    const auto path = BesidePolicy(source, PathOf(RequireText(source, part.node, "a file name")));
    const std::string name = Utf8Of(path.generic_u8string());
    policy.files.push_back({part.what, name, part.isDots, {}});
    try {
        SourceText file(name, InputStream(name).ReadAll());
        policy.files.back().sha256 = Sha256Of(file.Text());
        return file;
    } catch (const FileError& error) {
        source.Refuse({"unreadable-file", part.node.begin, error.what()});
    }
}

// Parses the text and keeps the document. Returns null, and adds the error, if it is not JSON.
const JsonDocument* AddDocument(PolicyReading& reading, SourceText source, size_t part) {
    JsonNode root;
    try {
        root = ParseJson(source);
    } catch (const DocumentError& error) {
        reading.findings.AddSyntaxError(source, error);
        return nullptr;
    }
    reading.documents.push_back(std::make_unique<const JsonDocument>(std::move(source), std::move(root)));
    reading.parts.push_back(part);
    return reading.documents.back().get();
}

// Calls `read` with the document that has the part, and with the root of the part in it.
template <typename Read>
void ReadInlineOrNamed(const Part& part, PolicyReading& reading, Read read) {
    if (part.node.kind != JsonNode::Kind::string) {
        read(part.policy, part.node);
        return;
    }
    std::optional<SourceText> source;
    if (!reading.findings.Collect(part.policy, [&] { source = ReadNamedFile(part, reading.policy); })) {
        return;
    }
    reading.findings.SetPart(part.node.begin);
    if (const JsonDocument* const file = AddDocument(reading, std::move(*source), part.node.begin)) {
        read(*file, file->Root());
    }
    reading.findings.SetPart(Findings::inPolicy);
}

LibraryDocument MakeLibraryDocument(const JsonDocument& document, const JsonNode& root) {
    const SourceText& source = document.Source();
    return {std::string(source.Text().substr(root.begin, root.end - root.begin)), source.At(root.begin)};
}

void ReadAllowList(const Part& part, PolicyReading& reading) {
    ReadInlineOrNamed(part, reading, [&reading](const JsonDocument& document, const JsonNode& root) {
        const size_t before = reading.findings.Warnings();
        CheckAllowList(document, root, reading.findings);
        reading.policy.skippedParts += reading.findings.Warnings() - before;
        reading.policy.allowList = MakeLibraryDocument(document, root);
        reading.policy.allowListEntries = ReadAllowListEntries(document, root);
    });
}

void ReadActions(const Part& part, PolicyReading& reading) {
    ReadInlineOrNamed(part, reading, [&reading](const JsonDocument& document, const JsonNode& root) {
        const size_t before = reading.findings.Warnings();
        CheckActions(document, root, reading.findings);
        reading.policy.skippedParts += reading.findings.Warnings() - before;
        reading.policy.actions = MakeLibraryDocument(document, root);
        reading.policy.actionRows = ReadActionRows(document, root);
    });
}

void ReadDotPart(const Part& part, PolicyReading& reading) {
    ReadInlineOrNamed(part, reading, [&reading](const JsonDocument& document, const JsonNode& root) {
        reading.policy.dots = ReadDots(document, root, reading.findings);
        reading.policy.dotPlaces = PlacesOfDots(document, root);
    });
}

uint32_t ReadMode(const SourceText& source, const JsonNode& node, const std::initializer_list<NamedValue>& names,
                  std::string_view what) {
    if (node.kind == JsonNode::Kind::number) {
        return static_cast<uint32_t>(RequireInteger(source, node, 0, std::numeric_limits<uint32_t>::max(), what));
    }
    if (node.kind != JsonNode::Kind::string) {
        source.Refuse(node.begin,
                      std::string(what) + " must be a name or a number, and this is " + KindName(node.kind));
    }
    const auto value = ValueOf(node.text, names);
    if (!value) {
        source.Refuse({"unknown-name", node.begin, '"' + node.text + "\" is not one of " + ListNames(names),
                       "one of " + ListNames(names)});
    }
    return *value;
}

bool CanEnd(uint32_t mode) {
    return mode == MODE_EMERGENCY || mode == MODE_ALLOW_AFTER_DECISION;
}

// Reads {"mode": "emergency", "until": "2026-11-20T12:00:00Z", "then": "action-table"}.
void ReadEndingMode(const JsonDocument& document, const JsonNode& node, Policy& policy, Findings& findings) {
    const SourceText& source = document.Source();
    CollectMemberFaults(document, node, {"mode", "until", "then"}, findings);
    const JsonNode& mode = RequireMember(source, node, "mode");
    const uint32_t value = ReadMode(source, mode, defenderModes, "\"mode\"");
    if (!CanEnd(value)) {
        source.Refuse(mode.begin, "only the modes \"emergency\" and \"allow-after-decision\" can have an end");
    }
    const JsonNode& until = RequireMember(source, node, "until");
    const auto time = ParseTimestamp(RequireText(source, until, "\"until\""));
    if (!time) {
        source.Refuse(until.begin, "\"until\" must be a time in UTC such as \"2026-11-20T12:00:00Z\"");
    }
    ModeEnd end{*time, MODE_ACTION_TABLE, document.PlaceAt(until.begin)};
    if (const JsonNode* const then = FindMember(node, "then")) {
        end.then = ReadMode(source, *then, defenderModes, "\"then\"");
    }
    policy.defenderMode = value;
    policy.defenderModeEnd = std::move(end);
}

void ReadDefenderMode(const JsonDocument& document, const JsonNode& node, Policy& policy, Findings& findings) {
    policy.defenderModePlace = document.PlaceAt(node.begin);
    if (node.kind == JsonNode::Kind::object) {
        ReadEndingMode(document, node, policy, findings);
    } else {
        policy.defenderMode = ReadMode(document.Source(), node, defenderModes, "\"defender_mode\"");
    }
}

std::optional<std::string> ReadMachineId(const SourceText& source, const JsonNode& node) {
    const std::string& text = RequireText(source, node, "\"machine_id\"");
    if (text.empty()) {
        source.Refuse(node.begin, "\"machine_id\" must not be empty");
    }
    return text == fromTheMachine ? std::nullopt : std::optional(text);
}

bool IsObject(const JsonDocument& document, const JsonNode& node, const char* what, Findings& findings) {
    return findings.Collect(document, [&] { RequireKind(document.Source(), node, JsonNode::Kind::object, what); });
}

std::map<std::string, PrescribedFailure> ReadFailures(const JsonDocument& document, const JsonNode& node,
                                                      Findings& findings) {
    const SourceText& source = document.Source();
    std::map<std::string, PrescribedFailure> failures;
    if (!IsObject(document, node, "\"failures\"", findings)) {
        return failures;
    }
    CollectMemberFaults(document, node, {}, findings);
    for (const JsonMember& member : node.members) {
        findings.Collect(document, [&] {
            RequireText(source, member.value, "a failure");
            const uint32_t failure = ReadMode(source, member.value, failureNames, "a failure");
            failures[member.name] = {static_cast<Failure>(failure), source.At(member.begin)};
        });
    }
    return failures;
}

std::filesystem::path ReadProgram(const SourceText& source, const JsonNode& node) {
    const std::filesystem::path file = PathOf(RequireText(source, node, "the file of a program"));
    if (!file.has_filename()) {
        source.Refuse(node.begin, "the file of a program must have a name");
    }
    return file.has_parent_path() ? BesidePolicy(source, file) : file;
}

std::map<std::string, std::filesystem::path> ReadPrograms(const JsonDocument& document, const JsonNode& node,
                                                          Findings& findings) {
    std::map<std::string, std::filesystem::path> programs;
    if (!IsObject(document, node, "\"programs\"", findings)) {
        return programs;
    }
    CollectMemberFaults(document, node, {}, findings);
    for (const JsonMember& member : node.members) {
        findings.Collect(document, [&] { programs[member.name] = ReadProgram(document.Source(), member.value); });
    }
    return programs;
}

// Reads the members of a policy.
class PolicyMembers {
public:
    PolicyMembers(const JsonDocument& document, PolicyReading& reading) : m_document(document), m_reading(reading) {}

    void Read() {
        const SourceText& source = m_document.Source();
        Policy& policy = m_reading.policy;
        Findings& findings = m_reading.findings;
        if (!IsObject(m_document, m_document.Root(), "a policy", findings)) {
            return;
        }
        CollectMemberFaults(m_document, m_document.Root(),
                            {"machine_id", "defender_mode", "exception_mode", "allow_list", "actions", "rules", "dots",
                             "failures", "programs"},
                            findings);
        findings.Collect(m_document, [&] {
            policy.rules = ReadRules(m_document, RequireMember(source, m_document.Root(), "rules"), findings);
        });
        Take("machine_id", [&](const JsonNode& node) { policy.machineId = ReadMachineId(source, node); });
        Take("defender_mode", [&](const JsonNode& node) { ReadDefenderMode(m_document, node, policy, findings); });
        Take("exception_mode", [&](const JsonNode& node) {
            policy.exceptionMode = ReadMode(source, node, exceptionModes, "\"exception_mode\"");
            policy.exceptionModePlace = m_document.PlaceAt(node.begin);
        });
        Take("allow_list", [&](const JsonNode& node) {
            ReadAllowList({m_document, node, "the allow list"}, m_reading);
        });
        Take("actions", [&](const JsonNode& node) { ReadActions({m_document, node, "the action table"}, m_reading); });
        Take("dots", [&](const JsonNode& node) { ReadDotPart({m_document, node, "the dots", true}, m_reading); });
        Take("failures", [&](const JsonNode& node) { policy.failures = ReadFailures(m_document, node, findings); });
        Take("programs", [&](const JsonNode& node) { policy.programs = ReadPrograms(m_document, node, findings); });
    }

private:
    // Calls `read` with the member, if there is one.
    template <typename Read>
    void Take(std::string_view name, Read read) {
        if (const JsonNode* const node = FindMember(m_document.Root(), name)) {
            m_reading.findings.Collect(m_document, [&] { read(*node); });
        }
    }

    const JsonDocument& m_document;
    PolicyReading& m_reading;
};

} // namespace

void PolicyReading::Warn(const DocumentPlace& place, Fault fault) {
    fault.begin = place.offset;
    for (size_t i = 0; i < documents.size(); ++i) {
        if (documents[i]->Source().Name() == place.where.file) {
            findings.SetPart(parts[i]);
            findings.Warn(*documents[i], fault);
            findings.SetPart(Findings::inPolicy);
            return;
        }
    }
}

PolicyReading ReadWholePolicy(SourceText source) {
    PolicyReading reading;
    reading.policy.files.push_back({"the policy", source.Name(), false, Sha256Of(source.Text())});
    if (const JsonDocument* const document = AddDocument(reading, std::move(source), Findings::inPolicy)) {
        PolicyMembers(*document, reading).Read();
    }
    return reading;
}

Policy ReadPolicy(const std::string& name) {
    return ReadPolicy(SourceText(name, InputStream(name).ReadAll()));
}

Policy ReadPolicy(SourceText source) {
    PolicyReading reading = ReadWholePolicy(std::move(source));
    reading.findings.ThrowFirstError();
    return std::move(reading.policy);
}

} // namespace mordhost
