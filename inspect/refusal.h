// The reason why a part of the output is missing.
#pragma once

#include <cstdint>
#include <string>

#include "native/ntStatus.h"
#include "platform/wideChar.h"

namespace mordinspect {

using WideText = std::basic_string<WideChar>;

// The step that failed, in words, and its reason: the status or the error code of the system, the limit of this program
// that was reached, or, if nothing failed, what was found instead.
struct Refusal {
    enum class Kind { status, error, limit, seen };

    std::string step;
    Kind kind = Kind::seen;
    uint32_t code = 0; // an NT status or a Windows error code, depending on `kind`
    WideText text;     // the limit, such as "16384 reads", or what was found
};

// Create a reason of each kind. `limit` and a narrow `seen` are ASCII. Throw std::bad_alloc.
Refusal ByStatus(std::string step, NtStatus status);
Refusal ByError(std::string step, uint32_t error);
Refusal ByLimit(std::string step, const std::string& limit);
Refusal Seen(std::string step, WideText seen);
Refusal Seen(std::string step, const std::string& seen);

} // namespace mordinspect
