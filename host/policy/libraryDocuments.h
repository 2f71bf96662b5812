// Checks of the documents that the library receives unchanged.
//
// An error is what the library refuses. A warning is what it silently skips or changes. Additional members that the
// formats allow are allowed here.
#pragma once

#include "document/findings.h"

namespace mordhost {

// {"mid_list": [{"mid": "MID-1", "protocol": ["KEY-1", "KEY-2"]}]}. `root` is a value of `document`.
void CheckAllowList(const JsonDocument& document, const JsonNode& root, Findings& findings);

// {"TYPE-1": 1, "TYPE-2": 0}, with at least one row.
void CheckActions(const JsonDocument& document, const JsonNode& root, Findings& findings);

} // namespace mordhost
