// Reads the rules of a policy.
#pragma once

#include <vector>

#include "document/jsonDocument.h"
#include "policy/policy.h"

namespace mordhost {

// Reads `node`, the value of "rules" in `document`. Throws DocumentError.
std::vector<Rule> ReadRules(const JsonDocument& document, const JsonNode& node);

} // namespace mordhost
