// The formats of the standard output.
#pragma once

#include "policy/modeNames.h"

namespace mordhost {

enum class OutputFormat {
    text,   // for people
    json,   // one JSON document
    jsonl,  // one JSON object per line, each written when it is known
    junit,  // the XML of JUnit; this and the following are formats of findings only
    tap,    // Test Anything Protocol 13
    sarif,  // SARIF 2.1.0
    github, // workflow commands, which become annotations
};

// "text", "json", "jsonl"; the values are those of OutputFormat.
extern const std::initializer_list<NamedValue> formatNames;

// All of them.
extern const std::initializer_list<NamedValue> findingFormatNames;

} // namespace mordhost
