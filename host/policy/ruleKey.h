// The protocol key of a rule.
#pragma once

#include <string>

#include "policy/policy.h"

namespace mordhost {

// The key under which the allow list has the machines of the rule: the guid of a web rule, the type of any other.
inline const std::string& KeyOf(const Rule& rule) {
    return rule.type == "web" ? rule.guid : rule.type;
}

} // namespace mordhost
