#include "policy/libraryDocuments.h"

#include <cstdint>
#include <limits>

#include "document/jsonAccess.h"

namespace mordhost {

void CheckAllowList(const SourceText& source, const JsonNode& root) {
    RequireKind(source, root, JsonNode::Kind::object, "the allow list");
    RequireNoRepeatedMember(source, root);
    const JsonNode& entries = RequireMember(source, root, "mid_list");
    RequireKind(source, entries, JsonNode::Kind::array, "\"mid_list\"");
    for (const JsonNode& entry : entries.elements) {
        RequireKind(source, entry, JsonNode::Kind::object, "an entry of \"mid_list\"");
        RequireNoRepeatedMember(source, entry);
        RequireText(source, RequireMember(source, entry, "mid"), "\"mid\"");
        const JsonNode& keys = RequireMember(source, entry, "protocol");
        RequireKind(source, keys, JsonNode::Kind::array, "\"protocol\"");
        for (const JsonNode& key : keys.elements) {
            RequireText(source, key, "a protocol key");
        }
    }
}

void CheckActions(const SourceText& source, const JsonNode& root) {
    RequireKind(source, root, JsonNode::Kind::object, "the action document");
    RequireNoRepeatedMember(source, root);
    if (root.members.empty()) {
        source.Refuse(root.begin, "the action document has no row");
    }
    for (const JsonMember& row : root.members) {
        if (row.name.empty()) {
            source.Refuse(row.begin, "a rule type must not be empty here");
        }
        RequireNoNul(source, row.begin, row.name, "a rule type");
        RequireInteger(source, row.value, std::numeric_limits<int32_t>::min(), std::numeric_limits<int32_t>::max(),
                       "an action");
    }
}

} // namespace mordhost
