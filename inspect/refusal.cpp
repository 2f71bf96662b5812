#include "refusal.h"

#include <utility>

namespace mordinspect {

Refusal ByStatus(std::string step, NtStatus status) {
    return {std::move(step), Refusal::Kind::status, static_cast<uint32_t>(status), {}};
}

Refusal ByError(std::string step, uint32_t error) {
    return {std::move(step), Refusal::Kind::error, error, {}};
}

Refusal ByLimit(std::string step, const std::string& limit) {
    return {std::move(step), Refusal::Kind::limit, 0, {limit.begin(), limit.end()}};
}

Refusal Seen(std::string step, WideText seen) {
    return {std::move(step), Refusal::Kind::seen, 0, std::move(seen)};
}

Refusal Seen(std::string step, const std::string& seen) {
    return Seen(std::move(step), WideText(seen.begin(), seen.end()));
}

} // namespace mordinspect
