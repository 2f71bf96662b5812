// A TCP socket of this machine.
#pragma once

#include <cstdint>

#include "document/ipAddress.h"

namespace mordhost {

struct TcpSocket {
    IpAddress local;
    IpAddress remote;
    uint16_t localPort = 0;
    uint16_t remotePort = 0;
    uint64_t cookie = 0; // unique as long as the machine runs
    uint64_t inode = 0;  // identifies the open file of a process; 0 if no process has the socket open

    bool operator==(const TcpSocket&) const = default;
};

} // namespace mordhost
