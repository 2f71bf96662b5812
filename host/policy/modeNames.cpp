#include "policy/modeNames.h"

#include "frame/values.h"
#include "policy/policy.h"

namespace mordhost {

const std::initializer_list<NamedValue> defenderModes = {
    {"all-forbid", MODE_ALL_FORBID},
    {"action-table", MODE_ACTION_TABLE},
    {"allow-after-decision", MODE_ALLOW_AFTER_DECISION},
    {"emergency", MODE_EMERGENCY},
};

const std::initializer_list<NamedValue> exceptionModes = {
    {"allow", EXCEPTION_ALLOW},
    {"block", EXCEPTION_BLOCK},
};

const std::initializer_list<NamedValue> failureNames = {
    {"network-error", static_cast<uint32_t>(Failure::networkError)},
    {"query-error", static_cast<uint32_t>(Failure::queryError)},
    {"broken-answer", static_cast<uint32_t>(Failure::brokenAnswer)},
};

std::optional<uint32_t> ValueOf(std::string_view name, const std::initializer_list<NamedValue>& names) {
    for (const NamedValue& known : names) {
        if (known.name == name) {
            return known.value;
        }
    }
    return {};
}

std::string NameOf(uint32_t value, const std::initializer_list<NamedValue>& names) {
    for (const NamedValue& known : names) {
        if (known.value == value) {
            return std::string(known.name);
        }
    }
    return std::to_string(value);
}

std::string ListNames(const std::initializer_list<NamedValue>& names) {
    std::string list;
    for (const NamedValue& known : names) {
        list += list.empty() ? "\"" : ", \"";
        list += known.name;
        list += '"';
    }
    return list;
}

} // namespace mordhost
