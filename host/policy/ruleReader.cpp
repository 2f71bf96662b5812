#include "policy/ruleReader.h"

#include <charconv>
#include <map>

#include "document/jsonAccess.h"

namespace mordhost {

namespace {

constexpr int64_t greatestPort = 65535;

// A rule with a condition that nothing meets would never apply.
void RequireFilledArray(const SourceText& source, const JsonNode& node, std::string_view what) {
    RequireKind(source, node, JsonNode::Kind::array, what);
    if (node.elements.empty()) {
        source.Refuse(node.begin, std::string(what) + " must not be empty: omit the key to accept every value");
    }
}

bool ParsePort(std::string_view text, uint16_t& port) {
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, port);
    return error == std::errc() && stop == end;
}

// Reads 445 or "8000-8080".
PortRange ReadPortRange(const SourceText& source, const JsonNode& node) {
    if (node.kind == JsonNode::Kind::number) {
        const auto port = static_cast<uint16_t>(RequireInteger(source, node, 0, greatestPort, "a port"));
        return {port, port};
    }
    if (node.kind != JsonNode::Kind::string) {
        source.Refuse(node.begin,
                      std::string("a port must be a number, or a string such as \"8000-8080\", and this is ") +
                          KindName(node.kind));
    }
    PortRange range;
    const std::string_view text = node.text;
    const size_t dash = text.find('-');
    if (dash == std::string_view::npos || !ParsePort(text.substr(0, dash), range.first) ||
        !ParsePort(text.substr(dash + 1), range.last) || range.first > range.last) {
        source.Refuse(node.begin, "\"" + node.text + "\" is not a port range such as \"8000-8080\"");
    }
    return range;
}

std::vector<PortRange> ReadPorts(const SourceText& source, const JsonNode& rule) {
    std::vector<PortRange> ports;
    if (const JsonNode* const list = FindMember(rule, "local_ports")) {
        RequireFilledArray(source, *list, "\"local_ports\"");
        for (const JsonNode& node : list->elements) {
            ports.push_back(ReadPortRange(source, node));
        }
    }
    return ports;
}

std::vector<AddressRange> ReadAddresses(const SourceText& source, const JsonNode& rule, const std::string& key) {
    std::vector<AddressRange> ranges;
    if (const JsonNode* const list = FindMember(rule, key)) {
        RequireFilledArray(source, *list, '"' + key + '"');
        for (const JsonNode& node : list->elements) {
            std::string reason;
            const auto range = ParseAddressRange(RequireText(source, node, "an address range"), reason);
            if (!range) {
                source.Refuse(node.begin, reason);
            }
            ranges.push_back(*range);
        }
    }
    return ranges;
}

// Requires unique guids: dots, allow list entries of web rules, and reports identify a rule by its guid.
class Guids {
public:
    explicit Guids(const SourceText& source) : m_source(source) {}

    void Add(const JsonNode& guid) {
        const auto [first, isNew] = m_places.emplace(guid.text, guid.begin);
        if (!isNew) {
            m_source.Refuse(guid.begin, "the guid \"" + guid.text +
                                            "\" is the guid of another rule: " + m_source.At(first->second).Text());
        }
    }

private:
    const SourceText& m_source;
    std::map<std::string_view, size_t> m_places;
};

} // namespace

std::vector<Rule> ReadRules(const JsonDocument& document, const JsonNode& node) {
    const SourceText& source = document.Source();
    RequireKind(source, node, JsonNode::Kind::array, "\"rules\"");
    std::vector<Rule> rules;
    Guids guids(source);
    for (const JsonNode& entry : node.elements) {
        RequireKind(source, entry, JsonNode::Kind::object, "a rule");
        RequireKnownMembers(source, entry, {"guid", "type", "local_ports", "local_addresses", "remote_addresses"});
        Rule rule;
        const JsonNode& guid = RequireMember(source, entry, "guid");
        rule.guid = RequireText(source, guid, "\"guid\"");
        guids.Add(guid);
        rule.type = RequireText(source, RequireMember(source, entry, "type"), "\"type\"");
        rule.localPorts = ReadPorts(source, entry);
        rule.localAddresses = ReadAddresses(source, entry, "local_addresses");
        rule.remoteAddresses = ReadAddresses(source, entry, "remote_addresses");
        rule.place = document.PlaceAt(entry.begin);
        rules.push_back(std::move(rule));
    }
    return rules;
}

} // namespace mordhost
