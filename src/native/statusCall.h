// The status of a platform function that reports by boolean.
#pragma once

#include "native/ntStatus.h"
#include "platform/processApi.h"

// Runs `call`, whose own result does not count, and returns what it left as the last-status value of this thread, which
// is cleared before.
template <typename Call>
NtStatus StatusOf(const Call& call) {
    platform::SetLastStatusValue(0);
    call();
    return StatusFromWord(platform::LastStatusValue());
}
