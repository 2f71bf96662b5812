// Writing of JSON on one line.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace mordhost {

// `text` as a JSON string, quotes included.
std::string JsonText(std::string_view text);

// The same at the end of `json`.
void AppendJsonText(std::string& json, std::string_view text);

// An object that is written member by member.
class JsonLine {
public:
    JsonLine& Text(std::string_view name, std::string_view value);
    JsonLine& Number(std::string_view name, int64_t value);
    JsonLine& Truth(std::string_view name, bool value);
    JsonLine& Null(std::string_view name);

    // `json` is a value that is written already.
    JsonLine& Raw(std::string_view name, std::string_view json);

    // The object, closed. The line cannot be used any more.
    std::string Take();

private:
    std::string m_text;
};

} // namespace mordhost
