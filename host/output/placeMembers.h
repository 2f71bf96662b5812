// The place of a value in a document as members of a JSON object.
#pragma once

#include "document/jsonDocument.h"
#include "output/jsonText.h"

namespace mordhost {

// Appends "file", "line", "column" and "pointer".
void AppendPlace(JsonMembers& members, const DocumentPlace& place);

} // namespace mordhost
