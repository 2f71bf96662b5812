// The decision on one event.
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "decide/dotHost.h"
#include "decide/logCollector.h"
#include "decide/reason.h"
#include "policy/connectionEvent.h"

namespace mordhost {

struct Decision {
    ConnectionEvent event;
    std::vector<size_t> rules;    // indexes in the policy of the rules that apply
    bool asked = false;           // whether the library decided; it does not if no rule applies
    uint32_t reply = 0;           // this and the following members are valid only if `asked`
    bool settled = false;         // the result of HandleEvent
    std::optional<uint32_t> mode; // the defender mode that decided; nullopt: the default of the library
    Reason reason;                // unknown if the library does not log
    WrittenRecords log;           // the library's records for this event
    std::vector<std::string> reports;
    std::optional<DotHost::Deletion> deletion; // the library's call of DeleteDot
    std::optional<Failure> failure;            // how the query of the library failed
    std::string process;                       // path of the process of the connection; may be empty
    std::chrono::nanoseconds duration{};       // of HandleEvent
};

// Whether the library deleted a dot.
inline bool HasDeletedDot(const Decision& decision) {
    return decision.deletion && decision.deletion->done;
}

// The verdict for output: "allow", "block", "no rule".
std::string VerdictOf(const Decision& decision);

// The verdict of a reply of the library.
std::string VerdictOfReply(uint32_t reply);

} // namespace mordhost
