#include "document/jsonText.h"

#include <algorithm>
#include <utility>

#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

namespace mordhost {

std::string JsonText(std::string_view text) {
    std::string json;
    AppendJsonText(json, text);
    return json;
}

void AppendJsonText(std::string& json, std::string_view text) {
    const bool standsForItself = std::none_of(
        text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == '"' || c == '\\'; });
    if (standsForItself) { // as most texts do
        json += '"';
        json += text;
        json += '"';
        return;
    }
    rapidjson::StringBuffer buffer;
    rapidjson::Writer<rapidjson::StringBuffer> writer(buffer);
    writer.String(text.data(), static_cast<rapidjson::SizeType>(text.size()));
    json.append(buffer.GetString(), buffer.GetSize());
}

JsonLine& JsonLine::Raw(std::string_view name, std::string_view json) {
    m_text += m_text.empty() ? '{' : ',';
    m_text += JsonText(name);
    m_text += ':';
    m_text += json;
    return *this;
}

JsonLine& JsonLine::Text(std::string_view name, std::string_view value) {
    return Raw(name, JsonText(value));
}

JsonLine& JsonLine::Number(std::string_view name, int64_t value) {
    return Raw(name, std::to_string(value));
}

JsonLine& JsonLine::Truth(std::string_view name, bool value) {
    return Raw(name, value ? "true" : "false");
}

JsonLine& JsonLine::Null(std::string_view name) {
    return Raw(name, "null");
}

std::string JsonLine::Take() {
    m_text += m_text.empty() ? "{}" : "}";
    return std::move(m_text);
}

} // namespace mordhost
