// A connection event of the host and its line of JSON.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "document/sourceText.h"

namespace mordhost {

// The program of the policy that an event names.
struct ProgramOfEvent {
    std::string name;
    Location where; // of the name in the line
};

// The record that the library reads lacks the values that are absent here.
struct ConnectionEvent {
    std::optional<uint32_t> flags; // EventFlag
    std::optional<uint32_t> pid;
    std::optional<std::string> remoteAddress;
    std::optional<uint16_t> remotePort;
    std::optional<std::string> localAddress;
    std::optional<uint16_t> localPort;
    std::optional<int64_t> netDrv; // version of the network driver

    // Known to the host only. A text may be empty.
    std::string time;    // UTC, "2025-11-20T09:54:12.345Z"
    std::string name;    // identifies the event in a policy
    std::string process; // path of the process at the time of the event
    size_t line = 0;     // in the event file, counted from 1
    // The program whose process id becomes `pid`, which is absent until then.
    std::optional<ProgramOfEvent> program;
};

// Reads an event from `source`, which holds one line. Throws DocumentError.
ConnectionEvent ReadEvent(const SourceText& source);

// Writes the event as a line without a line end.
std::string EventLine(const ConnectionEvent& event);

} // namespace mordhost
