// A JSON tree whose values know their positions, for error messages.
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
    size_t begin = 0;   // offset of the first byte in the source
    size_t end = 0;     // offset after the last byte
    std::string text;   // the value of a string, or a number as written
    bool truth = false; // the value of a boolean
    std::vector<JsonNode> elements;
    std::vector<JsonMember> members; // in document order, including repeated names
};

struct JsonMember {
    std::string name;
    size_t begin = 0; // offset of the opening quote of the name
    JsonNode value;
};

// The kind for messages: "a string", "an object".
const char* KindName(JsonNode::Kind kind);

// Parses `source` as strict JSON in valid UTF-8, with an optional byte order mark. Throws DocumentError, also for
// values that are nested more than 64 levels deep. The use of stack memory does not depend on the text.
JsonNode ParseJson(const SourceText& source);

} // namespace mordhost
