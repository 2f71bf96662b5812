#include "usage/trialSession.h"

#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

namespace mordhost {

TrialSession::TrialSession(const Policy& policy, const SessionOptions& options)
    : m_policy(policy), m_dots(policy.dots), m_session(policy, m_dots, options) {}

void TrialSession::Restart(const std::vector<AllowListEntry>& added) {
    SetAdded(added);
    m_dots.Restart();
}

void TrialSession::SetAdded(const std::vector<AllowListEntry>& added) {
    std::vector<AllowListEntry> entries = m_policy.allowListEntries;
    entries.insert(entries.end(), added.begin(), added.end());
    m_session.SetAllowList(AllowListText(entries));
}

std::string AllowListText(const std::vector<AllowListEntry>& entries) {
    rapidjson::StringBuffer text;
    rapidjson::Writer<rapidjson::StringBuffer> json(text);
    const auto write = [&json](const std::string& value) {
        json.String(value.data(), static_cast<rapidjson::SizeType>(value.size()));
    };
    json.StartObject();
    json.Key("mid_list");
    json.StartArray();
    for (const AllowListEntry& entry : entries) {
        json.StartObject();
        json.Key("mid");
        write(entry.mid);
        json.Key("protocol");
        json.StartArray();
        write(entry.key);
        json.EndArray();
        json.EndObject();
    }
    json.EndArray();
    json.EndObject();
    return {text.GetString(), text.GetSize()};
}

} // namespace mordhost
