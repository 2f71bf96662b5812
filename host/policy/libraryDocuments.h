// Checks of the documents that the library receives unchanged.
//
// The library ignores most errors in them. The host reports these to the author of the policy. Additional members that
// the formats allow are allowed here.
#pragma once

#include "document/jsonNode.h"

namespace mordhost {

// {"mid_list": [{"mid": "MID-1", "protocol": ["KEY-1", "KEY-2"]}]}. Throws DocumentError.
void CheckAllowList(const SourceText& source, const JsonNode& root);

// {"TYPE-1": 1, "TYPE-2": 0}, with at least one row. Throws DocumentError.
void CheckActions(const SourceText& source, const JsonNode& root);

} // namespace mordhost
