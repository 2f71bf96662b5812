// The dots of a host as a table and as a document.
#pragma once

#include <map>
#include <set>
#include <string>

#include "document/jsonNode.h"

namespace mordhost {

// Machine ids by rule guid.
using DotTable = std::map<std::string, std::set<std::string>>;

// Reads {"GUID-1": ["MID-1", "MID-2"]}. Throws DocumentError.
DotTable ReadDots(const SourceText& source, const JsonNode& root);

// Writes such a document, with one guid per line.
std::string DotsText(const DotTable& dots);

} // namespace mordhost
