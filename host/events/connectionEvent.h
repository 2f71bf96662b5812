// One connection event of the host, and its line of JSON.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "document/sourceText.h"

namespace mordhost {

// The program of its policy that an event names.
struct ProgramOfEvent {
    std::string name;
    Location where; // of the name in the line
};

// A value that is absent is absent from the record that the library gets too.
struct ConnectionEvent {
    std::optional<uint32_t> flags; // EventFlag
    std::optional<uint32_t> pid;
    std::optional<std::string> remoteAddress;
    std::optional<uint16_t> remotePort;
    std::optional<std::string> localAddress;
    std::optional<uint16_t> localPort;
    std::optional<int64_t> netDrv; // version of the network driver

    // The host's own; the library never sees these.
    std::string time;    // UTC, "2025-11-20T09:54:12.345Z", or empty
    std::string name;    // by which a policy can prescribe a failure, or empty
    std::string process; // path of the process at the time of the event, or empty
    size_t line = 0;     // in the file it was read from, counted from 1
    // The program whose process id is to stand in for the event's own, which it is read without.
    std::optional<ProgramOfEvent> program;
};

// Reads one event from `source`, which is one line. Throws DocumentError.
ConnectionEvent ReadEvent(const SourceText& source);

// The event as such a line, without a line end.
std::string EventLine(const ConnectionEvent& event);

} // namespace mordhost
