// The names of modes and failures.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>

namespace mordhost {

struct NamedValue {
    std::string_view name;
    uint32_t value;
};

// "all-forbid", "action-table", "allow-after-decision", "emergency".
extern const std::initializer_list<NamedValue> defenderModes;

// "allow", "block".
extern const std::initializer_list<NamedValue> exceptionModes;

// "network-error", "query-error", "broken-answer"; the values are those of Failure.
extern const std::initializer_list<NamedValue> failureNames;

// The value of a name; nullopt if it is unknown.
std::optional<uint32_t> ValueOf(std::string_view name, const std::initializer_list<NamedValue>& names);

// The name of a value; the number as text if it has no name.
std::string NameOf(uint32_t value, const std::initializer_list<NamedValue>& names);

// All names for messages, quoted and separated by commas.
std::string ListNames(const std::initializer_list<NamedValue>& names);

} // namespace mordhost
