#include "floor.h"

#include <rapidjson/document.h>
#include <rapidjson/prettywriter.h>
#include <rapidjson/stringbuffer.h>

#include "eventTexts.h"

namespace bench {

namespace {

using Writer = rapidjson::PrettyWriter<rapidjson::StringBuffer>;

void WriteGuids(Writer& writer, const char* key, const std::vector<std::string>& guids) {
    writer.Key(key);
    writer.StartArray();
    for (const std::string& guid : guids) {
        writer.String(guid.data(), static_cast<rapidjson::SizeType>(guid.size()));
    }
    writer.EndArray();
}

void WriteText(Writer& writer, const char* key, const char* text) {
    writer.Key(key);
    writer.String(text);
}

void WriteFlag(Writer& writer, const char* key, bool flag) {
    writer.Key(key);
    writer.Bool(flag);
}

void WriteRequest(rapidjson::StringBuffer& buffer, const std::vector<std::string>& guids) {
    Writer writer(buffer);
    writer.StartObject();
    WriteGuids(writer, "guid", guids);
    writer.EndObject();
}

void WriteReport(rapidjson::StringBuffer& buffer, const std::vector<std::string>& guids) {
    Writer writer(buffer);
    writer.StartObject();
    WriteGuids(writer, "rule_guid", guids);
    WriteText(writer, "type", ruleType);
    WriteFlag(writer, "block", true);
    WriteFlag(writer, "block_modified", false);
    WriteText(writer, "proc_name", "System");
    WriteText(writer, "proc_path", "System");
    WriteText(writer, "send_ip", remoteIp);
    WriteText(writer, "send_port", "49152");
    WriteText(writer, "recv_ip", localIp);
    WriteText(writer, "recv_port", "445");
    WriteText(writer, "send_mid", "");
    WriteText(writer, "net_drv_version", "20001");
    WriteText(writer, "protocol", ruleType);
    writer.EndObject();
}

} // namespace

size_t EventFloor(const std::vector<std::string>& guids, const std::string& answer) {
    size_t seen = 0;
    {
        rapidjson::StringBuffer buffer;
        WriteRequest(buffer, guids);
        seen += buffer.GetSize();
    }
    {
        rapidjson::Document document;
        document.Parse(answer.c_str());
        seen += document.MemberCount();
    }
    rapidjson::StringBuffer buffer;
    WriteReport(buffer, guids);
    return seen + buffer.GetSize();
}

std::string RequestText(const std::vector<std::string>& guids) {
    rapidjson::StringBuffer buffer;
    WriteRequest(buffer, guids);
    return {buffer.GetString(), buffer.GetSize()};
}

std::string ReportText(const std::vector<std::string>& guids) {
    rapidjson::StringBuffer buffer;
    WriteReport(buffer, guids);
    return {buffer.GetString(), buffer.GetSize()};
}

size_t AllowListFloor(const std::string& text) {
    rapidjson::Document document;
    document.Parse(text.c_str());
    std::map<std::string, std::set<std::string>> list;
    for (const auto& entry : document["mid_list"].GetArray()) {
        for (const auto& protocol : entry["protocol"].GetArray()) {
            list[protocol.GetString()].insert(entry["mid"].GetString());
        }
    }
    return list[ruleType].size();
}

} // namespace bench
