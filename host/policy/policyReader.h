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
    std::vector<size_t> parts; // of each document: the offset of its name in the policy, or Findings::inPolicy

    // Adds a warning about the part of the policy at `place`, whose offset replaces that of the fault.
    void Warn(const DocumentPlace& place, Fault fault);
};

// Reads the policy `source` and the files that it names, which are relative to it. Finds all errors, and everything
// that the library would skip. A text that is not JSON has one error only.
PolicyReading ReadWholePolicy(SourceText source);

// Reads the policy in the file `name` and the files that it names, which are relative to it. Throws FileError if the
// policy cannot be read, and DocumentError for the first error in document order, in it or in the other files.
Policy ReadPolicy(const std::string& name);

// As above, with the text of the policy.
Policy ReadPolicy(SourceText source);

} // namespace mordhost
