#include "policy/ruleReader.h"

#include <charconv>
#include <map>

#include "document/jsonAccess.h"

namespace mordhost {

namespace {

constexpr int64_t greatestPort = 65535;

// The document that has the rules, and the place for its faults.
struct RuleSource {
    const JsonDocument& document;
    Findings& findings;
};

// A rule with a condition that nothing meets would never apply.
void RequireFilledArray(const SourceText& source, const JsonNode& node, std::string_view what) {
    RequireKind(source, node, JsonNode::Kind::array, what);
    if (node.elements.empty()) {
        source.Refuse({"empty-list", node.begin,
                       std::string(what) + " must not be empty: omit the key to accept every value", "",
                       "remove the member or add a value"});
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
        source.Refuse({"port-range", node.begin,
                       std::string("a port must be a number, or a string such as \"8000-8080\", and this is ") +
                           KindName(node.kind)});
    }
    PortRange range;
    const std::string_view text = node.text;
    const size_t dash = text.find('-');
    if (dash == std::string_view::npos || !ParsePort(text.substr(0, dash), range.first) ||
        !ParsePort(text.substr(dash + 1), range.last) || range.first > range.last) {
        source.Refuse({"port-range", node.begin, "\"" + node.text + "\" is not a port range such as \"8000-8080\""});
    }
    return range;
}

// The elements of the list `key` of a rule, if it has one.
const std::vector<JsonNode>& ElementsOf(const RuleSource& from, const JsonNode& rule, const std::string& key) {
    static const std::vector<JsonNode> none;
    const JsonNode* const list = FindMember(rule, key);
    const bool isFilled = list != nullptr && from.findings.Collect(from.document, [&] {
        RequireFilledArray(from.document.Source(), *list, '"' + key + '"');
    });
    return isFilled ? list->elements : none;
}

void ReadPorts(const RuleSource& from, const JsonNode& node, Rule& rule) {
    const SourceText& source = from.document.Source();
    for (const JsonNode& element : ElementsOf(from, node, "local_ports")) {
        from.findings.Collect(from.document, [&] {
            rule.localPorts.push_back(ReadPortRange(source, element));
            rule.conditionPlaces.localPorts.push_back(source.At(element.begin));
        });
    }
}

AddressRange ReadAddressRange(const SourceText& source, const JsonNode& node) {
    std::string reason;
    const auto range = ParseAddressRange(RequireText(source, node, "an address range"), reason);
    if (!range) {
        source.Refuse({"address-range", node.begin, reason, "an address, or a range such as \"192.0.2.0/24\""});
    }
    return *range;
}

void ReadAddresses(const RuleSource& from, const JsonNode& rule, const std::string& key,
                   std::vector<AddressRange>& ranges, std::vector<Location>& places) {
    const SourceText& source = from.document.Source();
    for (const JsonNode& element : ElementsOf(from, rule, key)) {
        from.findings.Collect(from.document, [&] {
            ranges.push_back(ReadAddressRange(source, element));
            places.push_back(source.At(element.begin));
        });
    }
}

// Requires unique guids: dots, allow list entries of web rules, and reports identify a rule by its guid.
class Guids {
public:
    explicit Guids(const SourceText& source) : m_source(source) {}

    void Add(const JsonNode& guid) {
        const auto [first, isNew] = m_places.emplace(guid.text, guid.begin);
        if (!isNew) {
            m_source.Refuse(
                {"repeated-guid", guid.begin,
                 "the guid \"" + guid.text + "\" is the guid of another rule: " + m_source.At(first->second).Text(),
                 "a guid for each rule"});
        }
    }

private:
    const SourceText& m_source;
    std::map<std::string_view, size_t> m_places;
};

} // namespace

std::vector<Rule> ReadRules(const JsonDocument& document, const JsonNode& node, Findings& findings) {
    const SourceText& source = document.Source();
    std::vector<Rule> rules;
    if (!findings.Collect(document, [&] { RequireKind(source, node, JsonNode::Kind::array, "\"rules\""); })) {
        return rules;
    }
    Guids guids(source);
    const RuleSource from{document, findings};
    for (const JsonNode& entry : node.elements) {
        if (!findings.Collect(document, [&] { RequireKind(source, entry, JsonNode::Kind::object, "a rule"); })) {
            continue;
        }
        CollectMemberFaults(document, entry, {"guid", "type", "local_ports", "local_addresses", "remote_addresses"},
                            findings);
        Rule rule;
        findings.Collect(document, [&] {
            const JsonNode& guid = RequireMember(source, entry, "guid");
            rule.guid = RequireText(source, guid, "\"guid\"");
            guids.Add(guid);
        });
        findings.Collect(document,
                         [&] { rule.type = RequireText(source, RequireMember(source, entry, "type"), "\"type\""); });
        ReadPorts(from, entry, rule);
        ReadAddresses(from, entry, "local_addresses", rule.localAddresses, rule.conditionPlaces.localAddresses);
        ReadAddresses(from, entry, "remote_addresses", rule.remoteAddresses, rule.conditionPlaces.remoteAddresses);
        rule.place = document.PlaceAt(entry.begin);
        rules.push_back(std::move(rule));
    }
    return rules;
}

} // namespace mordhost
