// Checks a handling report.
#pragma once

#include "document/findings.h"

namespace mordhost {

// Adds an error for each member that the library always writes and that is missing or of another kind.
void CheckReport(const JsonDocument& document, Findings& findings);

} // namespace mordhost
