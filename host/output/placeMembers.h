// The place of a value in a document as members of a JSON object.
#pragma once

#include "output/jsonText.h"
#include "policy/place.h"

namespace mordhost {

// "file", "line", "column" and "pointer".
void AppendPlace(JsonMembers& members, const Place& place);

} // namespace mordhost
