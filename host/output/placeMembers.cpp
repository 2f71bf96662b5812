#include "output/placeMembers.h"

namespace mordhost {

void AppendPlace(JsonMembers& members, const DocumentPlace& place) {
    members.Text("file", place.where.file);
    members.Count("line", place.where.line);
    members.Count("column", place.where.column);
    members.Text("pointer", place.pointer);
}

} // namespace mordhost
