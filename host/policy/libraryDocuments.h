// Checks of the documents that go to the library as they stand.
//
// The library passes over much that is wrong in them, without a word. Whoever writes a policy wants to hear of it, so
// the host refuses what the library would pass over; members that the formats leave open stay open.
#pragma once

#include "document/jsonNode.h"

namespace mordhost {

// {"mid_list": [{"mid": "MID-1", "protocol": ["KEY-1", "KEY-2"]}]}. Throws DocumentError.
void CheckAllowList(const SourceText& source, const JsonNode& root);

// {"TYPE-1": 1, "TYPE-2": 0}, one row at least. Throws DocumentError.
void CheckActions(const SourceText& source, const JsonNode& root);

} // namespace mordhost
