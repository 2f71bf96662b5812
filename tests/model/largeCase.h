// Cases of scale: what a receiver stores and counts in wider ways, several times on one object.
#pragma once

#include "model/random.h"
#include "model/testCase.h"

namespace model {

// Initialises and starts the receiver if need be, in a mode in which the rules decide.
TestCase LargeCase(Random& random, bool logs);

} // namespace model
