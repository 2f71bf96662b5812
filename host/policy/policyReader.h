// Reading of policy documents.
#pragma once

#include <string>

#include "policy/policy.h"

namespace mordhost {

// The policy in the file `name` and in the files that it names, relative to it. Throws FileError when the policy itself
// cannot be read, and DocumentError for everything that is wrong in it or behind it.
Policy ReadPolicy(const std::string& name);

} // namespace mordhost
