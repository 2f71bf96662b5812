// The words for the modes.
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

std::optional<uint32_t> ValueOf(std::string_view name, const std::initializer_list<NamedValue>& names);

// All names, quoted and separated by commas, for messages.
std::string ListNames(const std::initializer_list<NamedValue>& names);

} // namespace mordhost
