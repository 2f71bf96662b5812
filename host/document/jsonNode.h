// JSON as a tree whose every value knows where it stands, so that a refusal can name the place.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "document/sourceText.h"

namespace mordhost {

struct JsonMember;

struct JsonNode {
    enum class Kind { null, boolean, number, string, array, object };

    Kind kind = Kind::null;
    size_t begin = 0;   // offsets in the source: the first byte of the value,
    size_t end = 0;     // and the one behind its last
    std::string text;   // a string's value, or a number as it is spelt
    bool truth = false; // a boolean's value
    std::vector<JsonNode> elements;
    std::vector<JsonMember> members; // in document order, repeated names included
};

struct JsonMember {
    std::string name;
    size_t begin = 0; // of the name's opening quote
    JsonNode value;
};

// "a string", "an object", … as messages name a kind.
const char* KindName(JsonNode::Kind kind);

// Parses the whole of `source` as strict JSON in valid UTF-8; a byte order mark in front is passed over. Throws
// DocumentError, also for values nested more than 64 deep. Uses no stack that grows with the text.
JsonNode ParseJson(const SourceText& source);

} // namespace mordhost
