// Whether one rule applies to all connections of another.
#pragma once

#include "policy/policy.h"

namespace mordhost {

// Whether `wide` applies to every connection that `narrow` applies to. False if that takes more than one element of a
// list of `wide` to prove.
bool Covers(const Rule& wide, const Rule& narrow);

} // namespace mordhost
