// Comparison of interface identifiers.
#pragma once

#include <cstdint>
#include <cstring>

#include "frame/identifiers.h"

// Whether `left` and `right` are the same 16 bytes, compared as four 32-bit words. A pointer that comes from outside
// need not be aligned.
inline bool SameIdentifier(const GUID* left, const GUID& right) {
    uint32_t leftWords[4];
    uint32_t rightWords[4];
    std::memcpy(leftWords, left, sizeof leftWords);
    std::memcpy(rightWords, &right, sizeof rightWords);
    for (int i = 0; i < 4; ++i) {
        if (leftWords[i] != rightWords[i]) {
            return false;
        }
    }
    return true;
}

inline bool SameIdentifier(const GUID& left, const GUID& right) {
    return SameIdentifier(&left, right);
}
