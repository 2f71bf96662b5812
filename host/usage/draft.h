// Drafts an allow list from events alone.
#pragma once

#include <filesystem>

#include "decide/decisionSession.h"
#include "usage/recording.h"
#include "usage/suggestion.h"

namespace mordhost {

// Events have addresses and ports, but neither machine ids nor rules. The draft has the address of the remote end in
// place of the machine id, and "port-N" in place of the protocol key: one entry for each pair that occurs.
struct Draft {
    std::vector<Suggestion> entries; // in the order of their first event
    size_t events = 0;
    size_t disconnects = 0; // events that the library always allows
    size_t incomplete = 0;  // other events without a remote address or a local port
    size_t allowed = 0;     // by the entries
};

// Reads the recording twice. The second time the library decides it with the draft in force, rules of type "port-N" for
// the ports, and a host that holds for each connection a dot of the address of its remote end; `events` of each entry
// are those that the library allowed through it. Throws LoadError, RunError, and what the recording throws.
Draft MakeDraft(Recording& recording, const SessionOptions& options, size_t most);

} // namespace mordhost
