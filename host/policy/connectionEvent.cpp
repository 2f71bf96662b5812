#include "policy/connectionEvent.h"

#include <limits>
#include <string_view>

#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include "document/ipAddress.h"
#include "document/jsonAccess.h"
#include "policy/timestamp.h"

namespace mordhost {

namespace {

template <typename Number>
std::optional<Number> ReadNumber(const SourceText& source, const JsonNode& root, const std::string& key) {
    const JsonNode* const node = FindMember(root, key);
    if (node == nullptr) {
        return {};
    }
    return static_cast<Number>(RequireInteger(source, *node, std::numeric_limits<Number>::min(),
                                              std::numeric_limits<Number>::max(), '"' + key + '"'));
}

std::optional<std::string> ReadAddress(const SourceText& source, const JsonNode& root, const std::string& key) {
    const JsonNode* const node = FindMember(root, key);
    if (node == nullptr) {
        return {};
    }
    const std::string& text = RequireText(source, *node, '"' + key + '"');
    if (!ParseIpAddress(text)) {
        source.Refuse(node->begin, '"' + text + "\" is not an IP address");
    }
    return text;
}

std::string ReadText(const SourceText& source, const JsonNode& root, const std::string& key) {
    const JsonNode* const node = FindMember(root, key);
    return node == nullptr ? std::string() : RequireText(source, *node, '"' + key + '"');
}

std::optional<ProgramOfEvent> ReadProgram(const SourceText& source, const JsonNode& root) {
    const JsonNode* const node = FindMember(root, "program");
    if (node == nullptr) {
        return {};
    }
    const std::string& name = RequireText(source, *node, "\"program\"");
    if (FindMember(root, "pid") != nullptr) {
        source.Refuse(node->begin, "\"program\" and \"pid\" exclude each other");
    }
    return ProgramOfEvent{name, source.At(node->begin)};
}

} // namespace

ConnectionEvent ReadEvent(const SourceText& source) {
    const JsonNode root = ParseJson(source);
    RequireKind(source, root, JsonNode::Kind::object, "an event");
    RequireKnownMembers(source, root,
                        {"time", "name", "process", "flags", "pid", "program", "remote_addr_ip", "remote_addr_port",
                         "local_addr_ip", "local_addr_port", "net_drv"});
    ConnectionEvent event;
    event.line = source.At(0).line;
    event.time = ReadText(source, root, "time");
    if (const JsonNode* const node = FindMember(root, "time"); node != nullptr && !IsTimestamp(event.time)) {
        source.Refuse(node->begin, '"' + event.time + "\" is not a time such as \"2025-11-20T09:54:12.345Z\"");
    }
    event.name = ReadText(source, root, "name");
    event.process = ReadText(source, root, "process");
    event.flags = ReadNumber<uint32_t>(source, root, "flags");
    event.pid = ReadNumber<uint32_t>(source, root, "pid");
    event.program = ReadProgram(source, root);
    event.remoteAddress = ReadAddress(source, root, "remote_addr_ip");
    event.remotePort = ReadNumber<uint16_t>(source, root, "remote_addr_port");
    event.localAddress = ReadAddress(source, root, "local_addr_ip");
    event.localPort = ReadNumber<uint16_t>(source, root, "local_addr_port");
    event.netDrv = ReadNumber<int64_t>(source, root, "net_drv");
    return event;
}

std::string EventLine(const ConnectionEvent& event) {
    rapidjson::StringBuffer buffer;
    rapidjson::Writer<rapidjson::StringBuffer> json(buffer);
    const auto text = [&json](const char* key, std::string_view value) {
        if (!value.empty()) {
            json.Key(key);
            json.String(value.data(), static_cast<rapidjson::SizeType>(value.size()));
        }
    };
    const auto number = [&json](const char* key, const auto& value) {
        if (value) {
            json.Key(key);
            json.Int64(*value);
        }
    };
    json.StartObject();
    text("time", event.time);
    text("name", event.name);
    number("flags", event.flags);
    number("pid", event.pid);
    if (event.program) {
        json.Key("program");
        json.String(event.program->name.data(), static_cast<rapidjson::SizeType>(event.program->name.size()));
    }
    text("process", event.process);
    text("remote_addr_ip", event.remoteAddress.value_or(""));
    number("remote_addr_port", event.remotePort);
    text("local_addr_ip", event.localAddress.value_or(""));
    number("local_addr_port", event.localPort);
    number("net_drv", event.netDrv);
    json.EndObject();
    return {buffer.GetString(), buffer.GetSize()};
}

} // namespace mordhost
