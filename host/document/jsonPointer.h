// JSON pointers (RFC 6901).
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "document/jsonNode.h"

namespace mordhost {

// Appends "/" and `token`, in which "~" becomes "~0" and "/" becomes "~1".
void AppendToken(std::string& pointer, std::string_view token);

// The pointer to the innermost value whose source has the byte at `offset`. A member also has its name: at an offset in
// a name the result points to the value of that member. Empty for the root and for offsets outside of it. The time
// depends on the depth of the value and on the logarithm of the number of its siblings.
std::string PointerAt(const JsonNode& root, size_t offset);

} // namespace mordhost
