// The dots of a host as a table and as a document.
#pragma once

#include <map>
#include <set>
#include <string>

#include "document/jsonDocument.h"

namespace mordhost {

// Machine ids by rule guid.
using DotTable = std::map<std::string, std::set<std::string>>;

// Reads {"GUID-1": ["MID-1", "MID-2"]}. Throws DocumentError.
DotTable ReadDots(const SourceText& source, const JsonNode& root);

// The places of the guids in `node`, which is a value of `document` and such a table.
std::map<std::string, DocumentPlace> PlacesOfDots(const JsonDocument& document, const JsonNode& node);

// Writes such a document, with one guid per line.
std::string DotsText(const DotTable& dots);

} // namespace mordhost
