// A TCP socket of this machine, as the kernel tells it.
#pragma once

#include <cstdint>
#include <string>

#include "net/ipAddress.h"

namespace mordhost {

struct TcpSocket {
    IpAddress local;
    IpAddress remote;
    uint16_t localPort = 0;
    uint16_t remotePort = 0;
    uint64_t cookie = 0; // tells this socket apart from all others while the machine runs
    uint64_t inode = 0;  // by which a process has it open; 0 when none has

    bool operator==(const TcpSocket&) const = default;
};

} // namespace mordhost
