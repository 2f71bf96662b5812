// The guids of rules, as the query request and the report hold them.
#pragma once

#include <cstdint>

#include "mordRev/src/recordReader.h"

// An array of the guids of all rules in array order, duplicates and empty ones kept. `Writer` is JsonText::Writer; a
// template, since headers leave RapidJSON to json.h.
template <typename Writer>
void WriteRuleGuids(Writer& writer, IEventRecord** rules, uint32_t ruleCount) {
    writer.StartArray();
    RecordText guid;
    for (uint32_t i = 0; i < ruleCount; ++i) {
        guid.Read(rules[i], "guid");
        writer.Text(guid.View());
    }
    writer.EndArray();
}
