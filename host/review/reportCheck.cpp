#include "review/reportCheck.h"

#include "document/jsonAccess.h"

namespace mordhost {

void CheckReport(const JsonDocument& document, Findings& findings) {
    using Kind = JsonNode::Kind;
    const SourceText& source = document.Source();
    const JsonNode& root = document.Root();
    if (!findings.Collect(document, [&] { RequireKind(source, root, Kind::object, "a report"); })) {
        return;
    }
    const auto require = [&](const std::string& name, Kind kind) {
        return findings.Collect(
            document, [&] { RequireKind(source, RequireMember(source, root, name), kind, '"' + name + '"'); });
    };
    for (const char* const name : {"block", "block_modified"}) {
        require(name, Kind::boolean);
    }
    for (const char* const name : {"type", "proc_name", "proc_path", "send_ip", "send_port", "recv_ip", "recv_port",
                                   "send_mid", "net_drv_version", "protocol"}) {
        require(name, Kind::string);
    }
    if (require("rule_guid", Kind::array)) {
        for (const JsonNode& guid : FindMember(root, "rule_guid")->elements) {
            findings.Collect(document, [&] { RequireKind(source, guid, Kind::string, "a guid"); });
        }
    }
}

} // namespace mordhost
