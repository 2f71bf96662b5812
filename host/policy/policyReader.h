// Reads policy documents.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "document/findings.h"
#include "policy/policy.h"

namespace mordhost {

// A policy as far as it could be read, and what is wrong with it.
struct PolicyReading {
    Policy policy; // without the faulty parts
    Findings findings;
    std::vector<std::unique_ptr<const JsonDocument>> documents; // the policy and the named files that are JSON

    // The document in the file of a place; null if there is none.
    const JsonDocument* DocumentOf(const DocumentPlace& place) const;
};

// Reads the policy `source` and the files that it names, which are relative to it. Finds all errors, and everything that
// the library would skip. A text that is not JSON has one error only.
PolicyReading ReadWholePolicy(SourceText source);

// Reads the policy in the file `name` and the files that it names, which are relative to it. Throws FileError if the
// policy cannot be read, and DocumentError for the first error in document order, in it or in the other files.
Policy ReadPolicy(const std::string& name);

} // namespace mordhost
