// Reads the rules of a policy.
#pragma once

#include <vector>

#include "document/findings.h"
#include "policy/policy.h"

namespace mordhost {

// Reads `node`, the value of "rules" in `document`. Adds each fault to `findings`; the result lacks the faulty parts.
std::vector<Rule> ReadRules(const JsonDocument& document, const JsonNode& node, Findings& findings);

} // namespace mordhost
