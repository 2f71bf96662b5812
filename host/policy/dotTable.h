// The dots of a host as a table and as a document.
#pragma once

#include <map>
#include <set>
#include <string>

#include "document/findings.h"

namespace mordhost {

// Machine ids by rule guid.
using DotTable = std::map<std::string, std::set<std::string>>;

// Reads `root`, which is a value of `document`: {"GUID-1": ["MID-1", "MID-2"]}. Adds each fault to `findings`; the
// result lacks the faulty parts.
DotTable ReadDots(const JsonDocument& document, const JsonNode& root, Findings& findings);

// The places of the guids in `node`, which is a value of `document` and such a table.
std::map<std::string, DocumentPlace> PlacesOfDots(const JsonDocument& document, const JsonNode& node);

// Writes such a document, with one guid per line.
std::string DotsText(const DotTable& dots);

} // namespace mordhost
