#include "policy/wholePolicy.h"

#include "frame/values.h"

namespace mordhost {

Policy SettingEverything(Policy policy) {
    if (!policy.allowList) {
        policy.allowList = LibraryDocument{R"({"mid_list": []})", {}};
    }
    if (!policy.actions) {
        policy.actions = LibraryDocument{R"({"of no rule": 0})", {}}; // the library refuses an empty table
    }
    policy.defenderMode = policy.defenderMode.value_or(MODE_ACTION_TABLE);
    policy.exceptionMode = policy.exceptionMode.value_or(EXCEPTION_BLOCK);
    return policy;
}

} // namespace mordhost
