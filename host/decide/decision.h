// One event, decided.
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "events/connectionEvent.h"
#include "library/logCollector.h"

namespace mordhost {

struct Decision {
    ConnectionEvent event;
    std::vector<size_t> rules; // places in the policy of those that apply
    bool asked = false;        // whether the library was; it is not when no rule applies
    uint32_t reply = 0;        // the rest counts for asked ones alone
    bool settled = false;      // what HandleEvent returned
    std::string reason;        // why, in one phrase; empty when the library does not log
    WrittenRecords log;        // of the library
    std::vector<std::string> reports;
    std::optional<std::string> deletedDot; // guid
    std::string process;                   // path of the connection's process, as far as it is known
    std::chrono::nanoseconds duration{};   // of HandleEvent alone
};

// The verdict in words.
std::string VerdictOf(const Decision& decision);

} // namespace mordhost
