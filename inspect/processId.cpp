#include "processId.h"

#include <charconv>

namespace mordinspect {

std::optional<uint32_t> ParseProcessId(std::string_view text) {
    uint32_t id = 0;
    const char* const end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, id);
    return error == std::errc() && rest == end ? std::optional(id) : std::nullopt;
}

} // namespace mordinspect
