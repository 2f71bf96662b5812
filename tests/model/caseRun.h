// Runs a case on the model, or on the library, and gives what could be seen.
#pragma once

#include "model/branches.h"
#include "model/testCase.h"
#include "model/trace.h"

namespace model {

// Adds the branches that the decision took to `branches`.
Trace RunOnModel(const TestCase& testCase, BranchCounts& branches);

// On a receiver of its own, which begins and ends here. PrepareLibrary must have been called.
Trace RunOnLibrary(const TestCase& testCase);

// Sets the library's siblings up, and logging on or off for all that follows.
void PrepareLibrary(bool logs);

} // namespace model
