// The rows of an action table as the library takes them.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "document/jsonDocument.h"

namespace mordhost {

struct ActionRow {
    std::string type;
    int32_t action = 0;
    DocumentPlace place; // of the name of the member
};

// The action of a row: a 32-bit integer without fraction and exponent. Returns nullopt for any other value, which the
// library skips.
std::optional<int32_t> ActionOf(const JsonNode& value);

// The rows of the action table `node`, which is a value of `document`, in document order. As the library does, ends a
// type at its first NUL, and skips an empty type and a value that is no action. Of rows with the same type the last one
// counts; the result has all of them.
std::vector<ActionRow> ReadActionRows(const JsonDocument& document, const JsonNode& node);

} // namespace mordhost
