// What two decisions on one event are compared by.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "compare/bytes.h"
#include "decide/decision.h"

namespace mordhost {

struct Brief {
    std::string verdict; // as VerdictOf
    ReasonCode code = ReasonCode::unknown;
    std::optional<ReasonCode> overruled;
    std::string reason;      // its text
    std::string deleted;     // guid of the deleted dot
    bool hasDeleted = false; // a guid may be empty

    bool HasSameReason(const Brief& other) const {
        return code == other.code && overruled == other.overruled && reason == other.reason;
    }
};

// Keeps the memory of the texts of `brief`.
void Shorten(const Decision& decision, Brief& brief);

void PutBrief(ByteWriter& out, const Brief& brief);
void GetBrief(ByteReader& in, Brief& brief);

} // namespace mordhost
