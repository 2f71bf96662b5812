// The formats of the standard output.
#pragma once

#include "policy/modeNames.h"

namespace mordhost {

enum class OutputFormat {
    text,  // for people
    json,  // one JSON document
    jsonl, // one JSON object per line, each written when it is known
};

// "text", "json", "jsonl"; the values are those of OutputFormat.
extern const std::initializer_list<NamedValue> formatNames;

} // namespace mordhost
