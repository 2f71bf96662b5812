#include "document/jsonAccess.h"

#include <algorithm>
#include <charconv>
#include <set>

namespace mordhost {

namespace {

std::string Quoted(std::string_view text) {
    return '"' + std::string(text) + '"';
}

} // namespace

void RequireKind(const SourceText& source, const JsonNode& node, JsonNode::Kind kind, std::string_view what) {
    if (node.kind != kind) {
        source.Refuse(node.begin,
                      std::string(what) + " must be " + KindName(kind) + ", and this is " + KindName(node.kind));
    }
}

void RequireNoRepeatedMember(const SourceText& source, const JsonNode& object) {
    std::set<std::string_view> seen;
    for (const JsonMember& member : object.members) {
        if (!seen.insert(member.name).second) {
            source.Refuse(member.begin, Quoted(member.name) + " is repeated");
        }
    }
}

void RequireKnownMembers(const SourceText& source, const JsonNode& object,
                         std::initializer_list<std::string_view> known) {
    for (const JsonMember& member : object.members) {
        if (std::find(known.begin(), known.end(), member.name) != known.end()) {
            continue;
        }
        std::string names;
        for (const std::string_view name : known) {
            names += (names.empty() ? "" : ", ") + Quoted(name);
        }
        source.Refuse(member.begin, "unknown key " + Quoted(member.name) + "; known here: " + names);
    }
    RequireNoRepeatedMember(source, object);
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
        source.Refuse(object.begin, "the key " + Quoted(name) + " is missing in this object");
    }
    return *member;
}

void RequireNoNul(const SourceText& source, size_t begin, std::string_view text, std::string_view what) {
    if (text.find('\0') != std::string_view::npos) {
        source.Refuse(begin, std::string(what) + " must not hold a NUL character");
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
        source.Refuse(node.begin, std::string(what) + " must be a whole number from " + std::to_string(least) + " to " +
                                      std::to_string(greatest) + ", and this is " + node.text);
    }
    return value;
}

} // namespace mordhost
