#include "policy/actionRows.h"

#include <charconv>

namespace mordhost {

std::optional<int32_t> ActionOf(const JsonNode& value) {
    if (value.kind != JsonNode::Kind::number) {
        return std::nullopt;
    }
    int32_t action = 0;
    const char* const end = value.text.data() + value.text.size();
    const auto [stop, error] = std::from_chars(value.text.data(), end, action);
    return error == std::errc() && stop == end ? std::optional(action) : std::nullopt;
}

std::vector<ActionRow> ReadActionRows(const JsonDocument& document, const JsonNode& node) {
    std::vector<ActionRow> rows;
    for (const JsonMember& member : node.members) {
        std::string type = member.name.c_str();
        const std::optional<int32_t> action = ActionOf(member.value);
        if (action && !type.empty()) {
            rows.push_back({std::move(type), *action, document.PlaceAt(member.begin)});
        }
    }
    return rows;
}

} // namespace mordhost
