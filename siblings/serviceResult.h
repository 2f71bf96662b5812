// The result codes of factories and services, in addition to RESULT_OK and RESULT_NO_INTERFACE.
#pragma once

#include <cstdint>

#include "frame/values.h"

namespace siblings {

constexpr uint32_t RESULT_FAILED = 0x80004005;           // a system call failed; no effect
constexpr uint32_t RESULT_NOT_STARTED = 0x8000FFFF;      // the service has not been started
constexpr uint32_t RESULT_OUT_OF_MEMORY = 0x8007000E;    // no effect
constexpr uint32_t RESULT_INVALID_ARGUMENT = 0x80070057; // an argument is null, unknown or malformed
constexpr uint32_t RESULT_TRUNCATED = 0x8007007A;              // the output did not fit and is truncated

// The operations of the services return signed words with the same bits.
constexpr int32_t Signed(uint32_t result) {
    return static_cast<int32_t>(result);
}

} // namespace siblings
