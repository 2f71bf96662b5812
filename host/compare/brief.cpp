#include "compare/brief.h"

namespace mordhost {

void Shorten(const Decision& decision, Brief& brief) {
    brief.verdict = VerdictOf(decision);
    brief.code = decision.reason.code;
    brief.overruled = decision.reason.overruled;
    brief.reason = decision.reason.text;
    brief.hasDeleted = HasDeletedDot(decision);
    brief.deleted.assign(brief.hasDeleted ? decision.deletion->guid : std::string_view());
}

void PutBrief(ByteWriter& out, const Brief& brief) {
    out.Put(brief.verdict);
    out.Put(static_cast<uint8_t>(brief.code));
    out.Put(brief.overruled ? std::optional(static_cast<uint8_t>(*brief.overruled)) : std::nullopt);
    out.Put(brief.reason);
    out.Put(brief.deleted);
    out.Put(static_cast<uint8_t>(brief.hasDeleted ? 1 : 0));
}

void GetBrief(ByteReader& in, Brief& brief) {
    brief.verdict.assign(in.Text());
    brief.code = static_cast<ReasonCode>(in.Get<uint8_t>());
    std::optional<uint8_t> overruled;
    in.GetInto(overruled);
    brief.overruled = overruled ? std::optional(static_cast<ReasonCode>(*overruled)) : std::nullopt;
    brief.reason.assign(in.Text());
    brief.deleted.assign(in.Text());
    brief.hasDeleted = in.Get<uint8_t>() != 0;
}

} // namespace mordhost
