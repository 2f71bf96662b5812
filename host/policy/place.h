// The places of values in their documents.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "document/jsonNode.h"

namespace mordhost {

struct Place {
    Location where;
    std::string pointer; // JSON pointer (RFC 6901) of the value in the file of `where`
};

// The places of the elements of an array whose JSON pointer is `pointer`. Takes time linear in the text.
std::vector<Place> PlacesOf(const SourceText& source, const std::vector<JsonNode>& elements, std::string_view pointer);

} // namespace mordhost
