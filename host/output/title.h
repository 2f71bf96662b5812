// The title of a run, above its table.
#pragma once

#include <string>

#include "policy/policy.h"

namespace mordhost {

// "office.json: machine id from the machine, defender mode action-table, exception mode block, 4 rules, 2 dots".
// Contains no control characters.
std::string TitleOf(const std::string& policyName, const Policy& policy);

} // namespace mordhost
