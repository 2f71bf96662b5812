// JSON, appended to a text.
#pragma once

#include <concepts>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace mordhost {

// Appends the text as a JSON string, with its quotes.
void AppendJsonString(std::string& out, std::string_view text);

void AppendJsonNumber(std::string& out, int64_t number);

// The JSON text as well-formed UTF-8, with an escape for each of the control characters U+007F to U+009F, which JSON
// permits and a terminal may interpret.
std::string TerminalSafe(std::string_view json);

// Appends the members of an object. The caller appends the braces.
class JsonMembers {
public:
    explicit JsonMembers(std::string& out) : m_out(out) {}

    // `name` needs no escapes. The caller appends the value.
    std::string& Name(std::string_view name);

    void Text(std::string_view name, std::string_view value) { AppendJsonString(Name(name), value); }
    void Raw(std::string_view name, std::string_view json) { Name(name) += json; }
    void Flag(std::string_view name, bool value) { Raw(name, value ? "true" : "false"); }
    void Null(std::string_view name) { Raw(name, "null"); }
    void Number(std::string_view name, int64_t value) { AppendJsonNumber(Name(name), value); }
    void Count(std::string_view name, size_t value) { Number(name, static_cast<int64_t>(value)); }

    // Null for an empty text.
    void TextOrNull(std::string_view name, std::string_view value);

    template <std::integral Held>
    void NumberOrNull(std::string_view name, const std::optional<Held>& value) {
        if (value) {
            Number(name, static_cast<int64_t>(*value));
        } else {
            Null(name);
        }
    }

private:
    std::string& m_out;
    bool m_first = true;
};

} // namespace mordhost
