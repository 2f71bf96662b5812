// The codes of all warnings.
#pragma once

#include <array>
#include <string_view>

namespace mordhost {

// A tool may depend on a code: it never changes its meaning. docs/mordhost.md describes each.
inline constexpr std::array warningCodes = std::to_array<std::string_view>({
    // What the library skips or changes in an allow list
    "mid-list-not-array",
    "entry-not-object",
    "entry-without-mid",
    "mid-not-string",
    "entry-without-protocol",
    "protocol-not-array",
    "key-not-string",
    "repeated-member",
    "text-after-nul",
    // In an action table
    "action-without-type",
    "action-not-integer",
    "replaced-action",
    // In the answer to a query
    "answer-not-object",
    "answer-value-malformed",
    "answer-mid-malformed",
    "answer-value-zero",
    "answer-repeated-guid",
    // A mode of a policy that lets connections pass
    "mode-without-end",
    "mode-ended",
    // What can never take effect in a policy
    "rule-without-machine",
    "web-rule-without-key",
    "unused-allow-list-key",
    "duplicate-entry",
    "unused-action",
    "shadowed-action",
    "unknown-dot",
    "duplicate-machine",
    "similar-id",
});

} // namespace mordhost
