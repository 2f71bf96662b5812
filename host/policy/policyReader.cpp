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
    const SourceText& policy;
    const JsonNode& node;
    std::string what;
    bool isDots = false;
};

SourceText ReadNamedFile(const Part& part, Policy& policy) {
    const auto path = BesidePolicy(part.policy, PathOf(RequireText(part.policy, part.node, "a file name")));
    const std::string name = Utf8Of(path.generic_u8string());
    policy.files.push_back({part.what, name, part.isDots, {}});
    try {
        SourceText file(name, InputStream(name).ReadAll());
        policy.files.back().sha256 = Sha256Of(file.Text());
        return file;
    } catch (const FileError& error) {
        part.policy.Refuse(part.node.begin, error.what());
    }
}

// Calls `read` with the document of the part.
template <typename Read>
auto ReadInlineOrNamed(const Part& part, Policy& policy, Read read) {
    if (part.node.kind != JsonNode::Kind::string) {
        return read(part.policy, part.node);
    }
    const SourceText file = ReadNamedFile(part, policy);
    return read(file, ParseJson(file));
}

LibraryDocument TextOf(const SourceText& source, const JsonNode& root) {
    return {std::string(source.Text().substr(root.begin, root.end - root.begin)), source.At(root.begin)};
}

// Reads an allow list that CheckAllowList accepts.
LibraryDocument ReadAllowList(const Part& part, Policy& policy) {
    return ReadInlineOrNamed(part, policy, [&](const SourceText& source, const JsonNode& root) {
        CheckAllowList(source, root);
        const auto& entries = RequireMember(source, root, "mid_list").elements;
        const bool isInline = &source == &part.policy;
        std::vector<Place> places = PlacesOf(source, entries, isInline ? "/allow_list/mid_list" : "/mid_list");
        for (size_t i = 0; i < entries.size(); ++i) {
            AllowEntry entry{FindMember(entries[i], "mid")->text, {}, std::move(places[i])};
            for (const JsonNode& key : FindMember(entries[i], "protocol")->elements) {
                entry.keys.push_back(key.text);
            }
            policy.allowEntries.push_back(std::move(entry));
        }
        return TextOf(source, root);
    });
}

LibraryDocument ReadActions(const Part& part, Policy& policy) {
    return ReadInlineOrNamed(part, policy, [](const SourceText& source, const JsonNode& root) {
        CheckActions(source, root);
        return TextOf(source, root);
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
    const SourceText source(name, InputStream(name).ReadAll());
    const JsonNode root = ParseJson(source);
    RequireKind(source, root, JsonNode::Kind::object, "a policy");
    RequireKnownMembers(source, root,
                        {"machine_id", "defender_mode", "exception_mode", "allow_list", "actions", "rules", "dots",
                         "failures", "programs"});
    Policy policy;
    policy.files.push_back({"the policy", name, false, Sha256Of(source.Text())});
    const JsonNode& rules = RequireMember(source, root, "rules");
    policy.rules = ReadRules(source, rules);
    policy.rulePlaces = PlacesOf(source, rules.elements, "/rules");
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
        policy.allowList = ReadAllowList({source, *node, "the allow list"}, policy);
    }
    if (const JsonNode* const node = FindMember(root, "actions")) {
        policy.actions = ReadActions({source, *node, "the action table"}, policy);
    }
    if (const JsonNode* const node = FindMember(root, "dots")) {
        policy.dots = ReadInlineOrNamed({source, *node, "the dots", true}, policy, ReadDots);
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
