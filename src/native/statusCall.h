// The NT status of a platform function that returns a boolean.
#pragma once

#include "native/ntStatus.h"
#include "platform/processApi.h"

// Clears the last-status value of this thread, runs `call`, whose result is ignored, and returns the last-status value
// afterwards. A call that succeeds leaves it at 0, which is STATUS_OF_SUCCESS.
template <typename Call>
NtStatus StatusOf(const Call& call) {
    platform::SetLastStatusValue(0);
    call();
    return StatusFromWord(platform::LastStatusValue());
}
