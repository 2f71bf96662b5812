// Why something is not there.
#pragma once

#include <cstdint>
#include <string>

#include "native/ntStatus.h"
#include "platform/wideChar.h"

namespace mordinspect {

using WideText = std::basic_string<WideChar>;

// The step that gave nothing, in words, and its reason: the status or the error that the system returned, the limit of
// this program that was reached, or, where nothing failed, what was seen instead.
struct Refusal {
    enum class Kind { status, error, limit, seen };

    std::string step;
    Kind kind = Kind::seen;
    uint32_t code = 0; // an NT status or a Windows error code, by `kind`
    WideText text;     // the limit, such as "16384 reads", or what was seen
};

Refusal ByStatus(std::string step, NtStatus status);
Refusal ByError(std::string step, uint32_t error);
Refusal ByLimit(std::string step, const std::string& limit); // ASCII
Refusal Seen(std::string step, WideText seen);
Refusal Seen(std::string step, const std::string& seen); // ASCII

} // namespace mordinspect
