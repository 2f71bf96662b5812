#include "policy/dotTable.h"

#include <rapidjson/prettywriter.h>
#include <rapidjson/stringbuffer.h>

#include "document/jsonAccess.h"

namespace mordhost {

DotTable ReadDots(const JsonDocument& document, const JsonNode& root, Findings& findings) {
    const SourceText& source = document.Source();
    DotTable dots;
    if (!findings.Collect(document, [&] { RequireKind(source, root, JsonNode::Kind::object, "the table of dots"); })) {
        return dots;
    }
    CollectMemberFaults(document, root, {}, findings);
    for (const JsonMember& member : root.members) {
        findings.Collect(document, [&] { RequireNoNul(source, member.begin, member.name, "a guid"); });
        auto& mids = dots[member.name];
        if (!findings.Collect(document, [&] {
                RequireKind(source, member.value, JsonNode::Kind::array, "the machine ids of a dot");
            })) {
            continue;
        }
        for (const JsonNode& mid : member.value.elements) {
            findings.Collect(document, [&] {
                if (!mids.insert(RequireText(source, mid, "a machine id")).second) {
                    findings.Warn(document, {"duplicate-machine", mid.begin,
                                             "this machine id has no effect, because the dot has it already",
                                             "each machine id once", "remove the machine id"});
                }
            });
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
