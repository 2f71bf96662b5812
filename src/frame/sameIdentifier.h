// Comparison of interface identifiers.
#pragma once

#include <cstring>

#include "frame/identifiers.h"

// Whether `left` and `right` are the same 16 bytes. A pointer that comes from outside need not be aligned.
inline bool SameIdentifier(const GUID* left, const GUID& right) {
    return std::memcmp(left, &right, sizeof right) == 0;
}

inline bool SameIdentifier(const GUID& left, const GUID& right) {
    return SameIdentifier(&left, right);
}
