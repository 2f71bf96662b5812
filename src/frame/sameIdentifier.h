// Comparison of interface identifiers.
#pragma once

#include <cstring>

#include "frame/identifiers.h"

// Returns whether `left` and `right` are the same 16 bytes. `left` must not be null and need not be aligned: it can
// come from the host.
inline bool SameIdentifier(const GUID* left, const GUID& right) {
    return std::memcmp(left, &right, sizeof right) == 0;
}

inline bool SameIdentifier(const GUID& left, const GUID& right) {
    return SameIdentifier(&left, right);
}
