// Checks a query result.
#pragma once

#include "document/findings.h"

namespace mordhost {

// {"GUID-1": {"value": 1, "mid": {"MID-1": 1}}}. A warning is what the library skips.
void CheckAnswer(const JsonDocument& document, Findings& findings);

} // namespace mordhost
