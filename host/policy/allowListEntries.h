// The entries of an allow list as the library takes them.
#pragma once

#include <string>
#include <vector>

#include "document/jsonDocument.h"

namespace mordhost {

// A machine that is allowed under a protocol key.
struct AllowListEntry {
    std::string mid;
    std::string key;
    DocumentPlace midPlace; // of the value of "mid"
    DocumentPlace keyPlace; // of the element of "protocol"
};

// The entries of the allow list `node`, which is a value of `document`, in document order and with repetitions. As the
// library does, skips an entry without a string "mid" and an array "protocol" and every key that is not a string, takes
// the first of repeated members, and ends each text at its first NUL. No entries if "mid_list" is not an array.
std::vector<AllowListEntry> ReadAllowListEntries(const JsonDocument& document, const JsonNode& node);

} // namespace mordhost
