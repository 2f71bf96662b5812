// Selects the variant of the access layer.
#pragma once

#include <memory>

#include "native/native.h"

// Creates the variant for this caller on this machine and the target `process`, which the caller keeps open for the
// life of the object. The target does not influence the choice. Throws std::bad_alloc; logs nothing. Any thread may
// call.
//
// Each bitness of the caller has its own body: a 64-bit caller has no gate and no variant that needs one.
std::unique_ptr<Native> ChooseNative(platform::Handle process);
