// Reads policy documents.
#pragma once

#include <string>

#include "policy/policy.h"

namespace mordhost {

// Reads the policy in the file `name` and the files that it names, which are relative to it. Throws FileError if the
// policy cannot be read, and DocumentError for every other error in it or in the other files.
Policy ReadPolicy(const std::string& name);

} // namespace mordhost
