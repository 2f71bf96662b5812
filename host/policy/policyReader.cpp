#include "policy/policyReader.h"

#include <functional>
#include <limits>

#include "document/jsonAccess.h"
#include "policy/libraryDocuments.h"
#include "policy/modeNames.h"
#include "policy/ruleReader.h"
#include "system/fileError.h"
#include "system/filePath.h"
#include "system/inputStream.h"

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
    const auto path =
        BesidePolicy(part.policy.Source(), PathOf(RequireText(part.policy.Source(), part.node, "a file name")));
    const std::string name = Utf8Of(path.generic_u8string());
    policy.files.push_back({part.what, name, part.isDots});
    try {
        return {name, InputStream(name).ReadAll()};
    } catch (const FileError& error) {
        part.policy.Source().Refuse(part.node.begin, error.what());
    }
}

// Calls `read` with the document that has the part, and with the root of the part in it.
template <typename Read>
auto ReadInlineOrNamed(const Part& part, Policy& policy, Read read) {
    if (part.node.kind != JsonNode::Kind::string) {
        return read(part.policy, part.node);
    }
    const JsonDocument file(ReadNamedFile(part, policy));
    return read(file, file.Root());
}

LibraryDocument MakeLibraryDocument(const JsonDocument& document, const JsonNode& root) {
    const SourceText& source = document.Source();
    return {std::string(source.Text().substr(root.begin, root.end - root.begin)), source.At(root.begin)};
}

void ReadAllowList(const Part& part, Policy& policy) {
    ReadInlineOrNamed(part, policy, [&policy](const JsonDocument& document, const JsonNode& root) {
        CheckAllowList(document.Source(), root);
        policy.allowList = MakeLibraryDocument(document, root);
        policy.allowListEntries = ReadAllowListEntries(document, root);
    });
}

void ReadActions(const Part& part, Policy& policy) {
    ReadInlineOrNamed(part, policy, [&policy](const JsonDocument& document, const JsonNode& root) {
        CheckActions(document.Source(), root);
        policy.actions = MakeLibraryDocument(document, root);
        policy.actionRows = ReadActionRows(document, root);
    });
}

void ReadDotPart(const Part& part, Policy& policy) {
    ReadInlineOrNamed(part, policy, [&policy](const JsonDocument& document, const JsonNode& root) {
        policy.dots = ReadDots(document.Source(), root);
        policy.dotPlaces = PlacesOfDots(document, root);
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
        source.Refuse(node.begin, '"' + node.text + "\" is not one of " + ListNames(names));
    }
    return *value;
}

std::optional<std::string> ReadMachineId(const SourceText& source, const JsonNode& node) {
    const std::string& text = RequireText(source, node, "\"machine_id\"");
    if (text.empty()) {
        source.Refuse(node.begin, "\"machine_id\" must not be empty");
    }
    return text == fromTheMachine ? std::nullopt : std::optional(text);
}

std::map<std::string, PrescribedFailure> ReadFailures(const SourceText& source, const JsonNode& node) {
    RequireKind(source, node, JsonNode::Kind::object, "\"failures\"");
    RequireNoRepeatedMember(source, node);
    std::map<std::string, PrescribedFailure> failures;
    for (const JsonMember& member : node.members) {
        RequireText(source, member.value, "a failure");
        const uint32_t failure = ReadMode(source, member.value, failureNames, "a failure");
        failures[member.name] = {static_cast<Failure>(failure), source.At(member.begin)};
    }
    return failures;
}

std::map<std::string, std::filesystem::path> ReadPrograms(const SourceText& source, const JsonNode& node) {
    RequireKind(source, node, JsonNode::Kind::object, "\"programs\"");
    RequireNoRepeatedMember(source, node);
    std::map<std::string, std::filesystem::path> programs;
    for (const JsonMember& member : node.members) {
        const std::filesystem::path file = PathOf(RequireText(source, member.value, "the file of a program"));
        if (!file.has_filename()) {
            source.Refuse(member.value.begin, "the file of a program must have a name");
        }
        programs[member.name] = file.has_parent_path() ? BesidePolicy(source, file) : file;
    }
    return programs;
}

} // namespace

Policy ReadPolicy(const std::string& name) {
    const JsonDocument document(SourceText(name, InputStream(name).ReadAll()));
    const SourceText& source = document.Source();
    const JsonNode& root = document.Root();
    RequireKind(source, root, JsonNode::Kind::object, "a policy");
    RequireKnownMembers(source, root,
                        {"machine_id", "defender_mode", "exception_mode", "allow_list", "actions", "rules", "dots",
                         "failures", "programs"});
    Policy policy;
    policy.files.push_back({"the policy", name});
    policy.rules = ReadRules(document, RequireMember(source, root, "rules"));
    if (const JsonNode* const node = FindMember(root, "machine_id")) {
        policy.machineId = ReadMachineId(source, *node);
    }
    if (const JsonNode* const node = FindMember(root, "defender_mode")) {
        policy.defenderMode = ReadMode(source, *node, defenderModes, "\"defender_mode\"");
    }
    if (const JsonNode* const node = FindMember(root, "exception_mode")) {
        policy.exceptionMode = ReadMode(source, *node, exceptionModes, "\"exception_mode\"");
    }
    if (const JsonNode* const node = FindMember(root, "allow_list")) {
        ReadAllowList({document, *node, "the allow list"}, policy);
    }
    if (const JsonNode* const node = FindMember(root, "actions")) {
        ReadActions({document, *node, "the action table"}, policy);
    }
    if (const JsonNode* const node = FindMember(root, "dots")) {
        ReadDotPart({document, *node, "the dots", true}, policy);
    }
    if (const JsonNode* const node = FindMember(root, "failures")) {
        policy.failures = ReadFailures(source, *node);
    }
    if (const JsonNode* const node = FindMember(root, "programs")) {
        policy.programs = ReadPrograms(source, *node);
    }
    return policy;
}

} // namespace mordhost
