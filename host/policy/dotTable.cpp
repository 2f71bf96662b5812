#include "policy/dotTable.h"

#include <rapidjson/prettywriter.h>
#include <rapidjson/stringbuffer.h>

#include "document/jsonAccess.h"

namespace mordhost {

DotTable ReadDots(const SourceText& source, const JsonNode& root) {
    RequireKind(source, root, JsonNode::Kind::object, "the table of dots");
    RequireNoRepeatedMember(source, root);
    DotTable dots;
    for (const JsonMember& member : root.members) {
        RequireNoNul(source, member.begin, member.name, "a guid");
        RequireKind(source, member.value, JsonNode::Kind::array, "the machine ids of a dot");
        auto& mids = dots[member.name];
        for (const JsonNode& mid : member.value.elements) {
            mids.insert(RequireText(source, mid, "a machine id"));
        }
    }
    return dots;
}

std::map<std::string, DocumentPlace> PlacesOfDots(const JsonDocument& document, const JsonNode& node) {
    std::map<std::string, DocumentPlace> places;
    for (const JsonMember& member : node.members) {
        places.emplace(member.name, document.PlaceAt(member.begin));
    }
    return places;
}

std::string DotsText(const DotTable& dots) {
    rapidjson::StringBuffer text;
    rapidjson::PrettyWriter<rapidjson::StringBuffer> json(text);
    json.SetFormatOptions(rapidjson::kFormatSingleLineArray);
    const auto size = [](const std::string& value) { return static_cast<rapidjson::SizeType>(value.size()); };
    json.StartObject();
    for (const auto& [guid, mids] : dots) {
        json.Key(guid.data(), size(guid));
        json.StartArray();
        for (const std::string& mid : mids) {
            json.String(mid.data(), size(mid));
        }
        json.EndArray();
    }
    json.EndObject();
    return std::string(text.GetString(), text.GetSize()) + '\n';
}

} // namespace mordhost
