// A build without a leak check: there is nothing to pause.
#include "kit/heap/leakCheck.h"

PauseLeakCheck::PauseLeakCheck() = default;
PauseLeakCheck::~PauseLeakCheck() = default;
