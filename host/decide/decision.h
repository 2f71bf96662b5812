// The decision on one event.
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "decide/logCollector.h"
#include "policy/connectionEvent.h"

namespace mordhost {

struct Decision {
    ConnectionEvent event;
    std::vector<size_t> rules; // indexes in the policy of the rules that apply
    bool asked = false;        // whether the library decided; it does not if no rule applies
    uint32_t reply = 0;        // this and the following members are valid only if `asked`
    bool settled = false;      // the result of HandleEvent
    std::string reason;        // one phrase; empty if the library does not log
    WrittenRecords log;        // the library's records for this event
    std::vector<std::string> reports;
    std::optional<std::string> deletedDot; // its guid
    std::string process;                   // path of the process of the connection; may be empty
    std::chrono::nanoseconds duration{};   // of HandleEvent
};

// The verdict for output: "allow", "block", "no rule".
std::string VerdictOf(const Decision& decision);

} // namespace mordhost
