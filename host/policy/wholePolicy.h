// A policy for a library that has had another one.
#pragma once

#include "policy/policy.h"

namespace mordhost {

// The policy with the library's defaults in place of what it leaves out. The library keeps the allow list, the action
// table and the modes of the policy before, for which the new one sets nothing.
Policy SettingEverything(Policy policy);

} // namespace mordhost
