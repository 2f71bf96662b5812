#include "policy/libraryDocuments.h"

#include <map>
#include <set>

#include "document/jsonAccess.h"
#include "policy/actionRows.h"

namespace mordhost {

namespace {

using Kind = JsonNode::Kind;

std::string Quoted(const std::string& text) {
    return '"' + text + '"';
}

// The check of one allow list.
class AllowListCheck {
public:
    AllowListCheck(const JsonDocument& document, Findings& findings) : m_document(document), m_findings(findings) {}

    void Check(const JsonNode& root) {
        const bool hasList = m_findings.Collect(m_document, [&] {
            RequireKind(m_document.Source(), root, Kind::object, "the allow list");
            RequireMember(m_document.Source(), root, "mid_list");
        });
        if (!hasList) {
            return;
        }
        WarnOfRepeated(root, {"mid_list"});
        const JsonNode& list = *FindMember(root, "mid_list");
        if (list.kind != Kind::array) {
            Warn("mid-list-not-array", list.begin,
                 std::string("\"mid_list\" is ") + KindName(list.kind) + ", so the library takes an empty allow list",
                 "an array", "put the entries into an array");
        }
        for (const JsonNode& entry : list.elements) {
            CheckEntry(entry);
        }
    }

private:
    void Warn(const char* code, size_t begin, const std::string& message, const char* expected, const char* fix) {
        m_findings.Warn(m_document, {code, begin, message, expected, fix});
    }

    // The library takes the first of repeated members.
    void WarnOfRepeated(const JsonNode& object, std::initializer_list<std::string_view> names) {
        std::set<std::string_view> seen;
        for (const JsonMember& member : object.members) {
            if (std::find(names.begin(), names.end(), member.name) != names.end() && !seen.insert(member.name).second) {
                Warn("repeated-member", member.begin,
                     "the library ignores this member, because " + Quoted(member.name) + " occurs before in the object",
                     "each member once", "merge the two members");
            }
        }
    }

    void WarnOfNul(const JsonNode& text) {
        if (text.text.find('\0') != std::string::npos) {
            Warn("text-after-nul", text.begin,
                 "the library ends this text at its NUL and takes " + Quoted(text.text.c_str()),
                 "a text without \\u0000", "remove the NUL and what the library does not take");
        }
    }

    void CheckEntry(const JsonNode& entry) {
        if (entry.kind != Kind::object) {
            Warn("entry-not-object", entry.begin,
                 std::string("the library skips this entry, because it is ") + KindName(entry.kind),
                 "an object with \"mid\" and \"protocol\"", "write the entry as an object");
            return;
        }
        WarnOfRepeated(entry, {"mid", "protocol"});
        const JsonNode* const mid = FindMember(entry, "mid");
        if (mid == nullptr) {
            Warn("entry-without-mid", entry.begin, "the library skips this entry, because it has no \"mid\"",
                 "a member \"mid\"", "add the machine id");
        } else if (mid->kind != Kind::string) {
            Warn("mid-not-string", mid->begin,
                 std::string("the library skips this entry, because \"mid\" is ") + KindName(mid->kind), "a string",
                 "write the machine id in quotes");
        } else {
            WarnOfNul(*mid);
        }
        const JsonNode* const keys = FindMember(entry, "protocol");
        if (keys == nullptr) {
            Warn("entry-without-protocol", entry.begin, "the library skips this entry, because it has no \"protocol\"",
                 "a member \"protocol\"", "add the protocol keys");
        } else if (keys->kind != Kind::array) {
            Warn("protocol-not-array", keys->begin,
                 std::string("the library skips this entry, because \"protocol\" is ") + KindName(keys->kind),
                 "an array of strings", "put the protocol keys into an array");
        } else {
            CheckKeys(*keys);
        }
    }

    void CheckKeys(const JsonNode& keys) {
        for (const JsonNode& key : keys.elements) {
            if (key.kind == Kind::string) {
                WarnOfNul(key);
            } else {
                Warn("key-not-string", key.begin,
                     std::string("the library skips this protocol key, because it is ") + KindName(key.kind),
                     "a string", "write the protocol key in quotes");
            }
        }
    }

    const JsonDocument& m_document;
    Findings& m_findings;
};

} // namespace

void CheckAllowList(const JsonDocument& document, const JsonNode& root, Findings& findings) {
    AllowListCheck(document, findings).Check(root);
}

void CheckActions(const JsonDocument& document, const JsonNode& root, Findings& findings) {
    if (!findings.Collect(document,
                          [&] { RequireKind(document.Source(), root, Kind::object, "the action document"); })) {
        return;
    }
    std::map<std::string, size_t> last; // the offset of the row that counts, by type
    for (const JsonMember& row : root.members) {
        const std::string type = row.name.c_str();
        if (type.empty()) {
            findings.Warn(document, {"action-without-type", row.begin,
                                     "the library skips this row, because a rule type must not be empty here",
                                     "a rule type", "name the rule type or remove the row"});
            continue;
        }
        if (!ActionOf(row.value)) {
            findings.Warn(document, {"action-not-integer", row.value.begin,
                                     "the library skips this row, because its action is not a 32-bit integer without "
                                     "fraction and exponent",
                                     "1 to allow the type, 0 for no effect", "write 1 or 0"});
            continue;
        }
        if (type.size() != row.name.size()) {
            findings.Warn(document, {"text-after-nul", row.begin,
                                     "the library ends this text at its NUL and takes " + Quoted(type),
                                     "a text without \\u0000", "remove the NUL and what the library does not take"});
        }
        const auto [earlier, isNew] = last.emplace(type, row.begin);
        if (!isNew) {
            findings.Warn(document, {"replaced-action", earlier->second,
                                     "this row has no effect, because a later row for " + Quoted(type) +
                                         " replaces it: " + document.Source().At(row.begin).Text(),
                                     "one row for each rule type", "remove one of the two rows"});
            earlier->second = row.begin;
        }
    }
    if (last.empty()) {
        findings.AddError(document, Fault{"no-action-row", root.begin,
                                          root.members.empty() ? "the action document has no row"
                                                               : "the action document has no row that counts",
                                          "at least one row", "add a row or remove the document"});
    }
}

} // namespace mordhost
