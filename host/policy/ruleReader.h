// Reads the rules of a policy.
#pragma once

#include <vector>

#include "document/jsonNode.h"
#include "policy/policy.h"

namespace mordhost {

// Reads the value of "rules". Throws DocumentError.
std::vector<Rule> ReadRules(const SourceText& source, const JsonNode& node);

} // namespace mordhost
