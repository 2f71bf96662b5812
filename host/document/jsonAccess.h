// Strict access to a JSON tree.
//
// All functions throw DocumentError, with the position, for a value that is not as required. `what` names the value in
// messages, such as "the port range".
#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>

#include "document/findings.h"
#include "document/jsonNode.h"

namespace mordhost {

// Requires a value of this kind.
void RequireKind(const SourceText& source, const JsonNode& node, JsonNode::Kind kind, std::string_view what);

// Requires that all member names of `object` are among `known` and that none is repeated.
void RequireKnownMembers(const SourceText& source, const JsonNode& object,
                         std::initializer_list<std::string_view> known);

// Requires that no member name of `object` is repeated.
void RequireNoRepeatedMember(const SourceText& source, const JsonNode& object);

// Adds an error for each member whose name is not among `known` (any name if that is empty) or is repeated.
void CollectMemberFaults(const JsonDocument& document, const JsonNode& object,
                         std::initializer_list<std::string_view> known, Findings& findings);

// The member `name` of `object`, or null.
const JsonNode* FindMember(const JsonNode& object, std::string_view name);

// The member `name` of `object`, which is required.
const JsonNode& RequireMember(const SourceText& source, const JsonNode& object, std::string_view name);

// Requires a string without a NUL character, because the library takes NUL-terminated texts.
const std::string& RequireText(const SourceText& source, const JsonNode& node, std::string_view what);

// Requires a name at offset `begin` without a NUL character.
void RequireNoNul(const SourceText& source, size_t begin, std::string_view text, std::string_view what);

// Requires an integer from `least` to `greatest`.
int64_t RequireInteger(const SourceText& source, const JsonNode& node, int64_t least, int64_t greatest,
                       std::string_view what);

} // namespace mordhost
