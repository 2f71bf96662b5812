// NT statuses.
#pragma once

#include <cstdint>

// An NTSTATUS. Negative as a signed value means failure, warnings such as a partial copy included.
using NtStatus = int32_t;

constexpr NtStatus StatusFromWord(uint32_t word) {
    return static_cast<NtStatus>(word);
}

constexpr NtStatus STATUS_OF_SUCCESS = 0;
constexpr NtStatus STATUS_OF_MISSING_FUNCTION = StatusFromWord(0xC0000138); // STATUS_ORDINAL_NOT_FOUND
constexpr NtStatus STATUS_OF_REFUSED_REQUEST = StatusFromWord(0xC00000BB);  // STATUS_NOT_SUPPORTED

constexpr bool Failed(NtStatus status) {
    return status < 0;
}
