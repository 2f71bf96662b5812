// NT status codes.
#pragma once

#include <cstdint>

// An NTSTATUS. A negative value is a failure; that includes warnings such as a partial copy.
using NtStatus = int32_t;

// Returns the status with the bits of `word`.
constexpr NtStatus StatusFromWord(uint32_t word) {
    return static_cast<NtStatus>(word);
}

// The statuses that this layer returns itself.
constexpr NtStatus STATUS_OF_SUCCESS = 0;
constexpr NtStatus STATUS_OF_MISSING_FUNCTION = StatusFromWord(0xC0000138); // STATUS_ORDINAL_NOT_FOUND
constexpr NtStatus STATUS_OF_REFUSED_REQUEST = StatusFromWord(0xC00000BB);  // STATUS_NOT_SUPPORTED

constexpr bool Failed(NtStatus status) {
    return status < 0;
}
