// The choice of the access layer's variant.
#pragma once

#include <memory>

#include "native/native.h"

// The variant for this caller on this machine; the target plays no part in it. There is a body for each width of
// caller: one that is 64-bit has no gate, and no variant that needs one.
std::unique_ptr<Native> ChooseNative(platform::Handle process);
