#include "document/jsonAccess.h"

#include <algorithm>
#include <charconv>
#include <set>

namespace mordhost {

namespace {

std::string Quoted(std::string_view text) {
    return '"' + std::string(text) + '"';
}

std::string NamesOf(std::initializer_list<std::string_view> known) {
    std::string names;
    for (const std::string_view name : known) {
        names += (names.empty() ? "" : ", ") + Quoted(name);
    }
    return names;
}

Fault UnknownKey(const JsonMember& member, std::initializer_list<std::string_view> known) {
    const std::string names = NamesOf(known);
    return {"unknown-key", member.begin, "unknown key " + Quoted(member.name) + "; known here: " + names,
            "one of " + names, "correct the key or remove the member"};
}

Fault RepeatedKey(const JsonMember& member) {
    return {"repeated-key", member.begin, Quoted(member.name) + " is repeated", "each key once",
            "remove one of the two members"};
}

bool IsAmong(std::initializer_list<std::string_view> known, const std::string& name) {
    return std::find(known.begin(), known.end(), name) != known.end();
}

} // namespace

void RequireKind(const SourceText& source, const JsonNode& node, JsonNode::Kind kind, std::string_view what) {
    if (node.kind != kind) {
        source.Refuse({"wrong-kind", node.begin,
                       std::string(what) + " must be " + KindName(kind) + ", and this is " + KindName(node.kind),
                       KindName(kind)});
    }
}

void RequireNoRepeatedMember(const SourceText& source, const JsonNode& object) {
    std::set<std::string_view> seen;
    for (const JsonMember& member : object.members) {
        if (!seen.insert(member.name).second) {
            source.Refuse(RepeatedKey(member));
        }
    }
}

void RequireKnownMembers(const SourceText& source, const JsonNode& object,
                         std::initializer_list<std::string_view> known) {
    for (const JsonMember& member : object.members) {
        if (!IsAmong(known, member.name)) {
            source.Refuse(UnknownKey(member, known));
        }
    }
    RequireNoRepeatedMember(source, object);
}

void CollectMemberFaults(const JsonDocument& document, const JsonNode& object,
                         std::initializer_list<std::string_view> known, Findings& findings) {
    std::set<std::string_view> seen;
    for (const JsonMember& member : object.members) {
        if (known.size() > 0 && !IsAmong(known, member.name)) {
            findings.AddError(document, UnknownKey(member, known));
        } else if (!seen.insert(member.name).second) {
            findings.AddError(document, RepeatedKey(member));
        }
    }
}

const JsonNode* FindMember(const JsonNode& object, std::string_view name) {
    for (const JsonMember& member : object.members) {
        if (member.name == name) {
            return &member.value;
        }
    }
    return nullptr;
}

const JsonNode& RequireMember(const SourceText& source, const JsonNode& object, std::string_view name) {
    const JsonNode* const member = FindMember(object, name);
    if (member == nullptr) {
        source.Refuse({"missing-key", object.begin, "the key " + Quoted(name) + " is missing in this object",
                       "a member " + Quoted(name), "add the member " + Quoted(name)});
    }
    return *member;
}

void RequireNoNul(const SourceText& source, size_t begin, std::string_view text, std::string_view what) {
    if (text.find('\0') != std::string_view::npos) {
        source.Refuse({"nul-character", begin, std::string(what) + " must not hold a NUL character",
                       "a text without \\u0000", "remove the NUL and decide what the text is"});
    }
}

const std::string& RequireText(const SourceText& source, const JsonNode& node, std::string_view what) {
    RequireKind(source, node, JsonNode::Kind::string, what);
    RequireNoNul(source, node.begin, node.text, what);
    return node.text;
}

int64_t RequireInteger(const SourceText& source, const JsonNode& node, int64_t least, int64_t greatest,
                       std::string_view what) {
    RequireKind(source, node, JsonNode::Kind::number, what);
    int64_t value = 0;
    const char* const end = node.text.data() + node.text.size();
    const auto [stop, error] = std::from_chars(node.text.data(), end, value);
    if (error != std::errc() || stop != end || value < least || value > greatest) {
        const std::string range = "a whole number from " + std::to_string(least) + " to " + std::to_string(greatest);
        source.Refuse({"number-out-of-range", node.begin,
                       std::string(what) + " must be " + range + ", and this is " + node.text, range});
    }
    return value;
}

} // namespace mordhost
