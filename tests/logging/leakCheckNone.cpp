// A build without a leak check: there is nothing to pause.
#include "logging/leakCheck.h"

PauseLeakCheck::PauseLeakCheck() = default;
PauseLeakCheck::~PauseLeakCheck() = default;
