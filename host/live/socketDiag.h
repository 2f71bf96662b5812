// The TCP sockets of this machine, from the socket diagnostics of the kernel (netlink).
#pragma once

#include <vector>

#include "live/tcpSocket.h"
#include "system/descriptorPosix.h"

namespace mordhost {

class SocketDiag {
public:
    // Throws RunError if the kernel has no socket diagnostics.
    SocketDiag();

    // All listening sockets. They have no remote end. Throws RunError.
    std::vector<TcpSocket> Listeners();

    // All sockets with a connection that this side has not closed. Throws RunError.
    std::vector<TcpSocket> Connections();

    // Whether the kernel reports each connection that ends. This needs CAP_NET_ADMIN.
    bool HearsEnds() const { return m_ends.IsOpen(); }

    // The descriptor that becomes readable when connections have ended; -1 if HearsEnds is false.
    int EndsHandle() const { return m_ends.Get(); }

    // The sockets that ended since the last call. Does not wait. The kernel drops reports when there are too many.
    std::vector<TcpSocket> TakeEnded();

private:
    std::vector<TcpSocket> Dump(uint32_t states);
    void DumpFamily(uint8_t family, uint32_t states, std::vector<TcpSocket>& sockets);

    Descriptor m_requests;
    Descriptor m_ends;
};

} // namespace mordhost
