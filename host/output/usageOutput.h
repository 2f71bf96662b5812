// The use of a policy on the standard output.
#pragma once

#include <ostream>

#include "output/format.h"
#include "usage/policyUse.h"

namespace mordhost {

// Writes the unused parts, or all parts for `all`, and the summary in the format.
void WriteUse(std::ostream& out, const PolicyUse& use, bool all, OutputFormat format);

} // namespace mordhost
