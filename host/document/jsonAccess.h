// Strict reading of a JSON tree: what is not as expected is refused with its place.
//
// `what` names a value in messages, such as "the port range". All of these throw DocumentError.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>

#include "document/jsonNode.h"

namespace mordhost {

// Refuses a value of another kind.
void RequireKind(const SourceText& source, const JsonNode& node, JsonNode::Kind kind, std::string_view what);

// Refuses members of `object` that stand twice, and those whose name is not among `known`.
void RequireKnownMembers(const SourceText& source, const JsonNode& object,
                         std::initializer_list<std::string_view> known);
void RequireNoRepeatedMember(const SourceText& source, const JsonNode& object);

// The member `name` of `object`, or null.
const JsonNode* FindMember(const JsonNode& object, std::string_view name);

// The member `name` of `object`; refuses an object without it.
const JsonNode& RequireMember(const SourceText& source, const JsonNode& object, std::string_view name);

// A string without a NUL, since texts go to the library with a NUL at their end.
const std::string& RequireText(const SourceText& source, const JsonNode& node, std::string_view what);

// The same for a name at `begin`.
void RequireNoNul(const SourceText& source, size_t begin, std::string_view text, std::string_view what);

// A whole number within the bounds, which belong to the range.
int64_t RequireInteger(const SourceText& source, const JsonNode& node, int64_t least, int64_t greatest,
                       std::string_view what);

} // namespace mordhost
