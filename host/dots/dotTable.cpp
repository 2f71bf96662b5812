#include "dots/dotTable.h"

#include "document/jsonAccess.h"
#include "document/jsonText.h"

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

std::string DotsText(const DotTable& dots) {
    std::string text = "{";
    const char* beforeGuid = "\n    ";
    for (const auto& [guid, mids] : dots) {
        text += beforeGuid + JsonText(guid) + ": [";
        const char* beforeMid = "";
        for (const std::string& mid : mids) {
            text += beforeMid + JsonText(mid);
            beforeMid = ", ";
        }
        text += ']';
        beforeGuid = ",\n    ";
    }
    text += dots.empty() ? "}\n" : "\n}\n";
    return text;
}

} // namespace mordhost
