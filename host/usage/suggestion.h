// Suggested entries of an allow list.
#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <vector>

#include "decide/reasonCode.h"
#include "usage/eventSample.h"

namespace mordhost {

struct Suggestion {
    std::string machine;
    std::string key;
    // Further machines of the same dot, the first few: an entry for one of them would also allow the first event.
    std::vector<std::string> alternatives;
    EventSample events; // that become allowed through this entry
};

// What a recording lacks in an allow list, and the effect of all suggestions together.
struct Suggestions {
    std::vector<Suggestion> entries;
    // Events that become allowed through an entry that the list already has, because a dot is left for them.
    EventSample alsoAllowed;
    // Events that are allowed now and become blocked, because an event before them uses their dot.
    EventSample noLongerAllowed;
    size_t events = 0;
    size_t allowedBefore = 0;
    size_t allowedAfter = 0;
    size_t withoutRule = 0;               // events to which no rule applies
    std::map<ReasonCode, size_t> blocked; // why the other events remain blocked
};

} // namespace mordhost
