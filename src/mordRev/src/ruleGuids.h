// The guids of rules, as the query request and the report list them.
#pragma once

#include <cstdint>

#include "mordRev/src/recordReader.h"

// Writes an array with the guid of every rule, in array order, including duplicates and empty guids. `Writer` is
// JsonText::Writer; a template parameter, since only json.h includes RapidJSON.
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
