#include "policy/allowListEntries.h"

#include "document/jsonAccess.h"

namespace mordhost {

namespace {

const JsonNode* MemberOfKind(const JsonNode& object, std::string_view name, JsonNode::Kind kind) {
    const JsonNode* const member = FindMember(object, name);
    return member != nullptr && member->kind == kind ? member : nullptr;
}

} // namespace

std::vector<AllowListEntry> ReadAllowListEntries(const JsonDocument& document, const JsonNode& node) {
    std::vector<AllowListEntry> entries;
    const JsonNode* const list = MemberOfKind(node, "mid_list", JsonNode::Kind::array);
    if (list == nullptr) {
        return entries;
    }
    for (const JsonNode& entry : list->elements) {
        const JsonNode* const mid = MemberOfKind(entry, "mid", JsonNode::Kind::string);
        const JsonNode* const keys = MemberOfKind(entry, "protocol", JsonNode::Kind::array);
        if (mid == nullptr || keys == nullptr) {
            continue;
        }
        const DocumentPlace midPlace = document.PlaceAt(mid->begin);
        for (const JsonNode& key : keys->elements) {
            if (key.kind == JsonNode::Kind::string) {
                entries.push_back({mid->text.c_str(), key.text.c_str(), midPlace, document.PlaceAt(key.begin)});
            }
        }
    }
    return entries;
}

} // namespace mordhost
