// The kernel's own list of TCP sockets, over its socket diagnostics.
#pragma once

#include <vector>

#include "live/tcpSocket.h"

namespace mordhost {

class SocketDiag {
public:
    // Throws RunError when the kernel does not answer such questions.
    SocketDiag();
    ~SocketDiag();
    SocketDiag(const SocketDiag&) = delete;
    SocketDiag& operator=(const SocketDiag&) = delete;

    // All sockets that listen; they have no remote end. Throws RunError.
    std::vector<TcpSocket> Listeners();

    // All sockets with a connection that this side has not closed. Throws RunError.
    std::vector<TcpSocket> Connections();

    // Whether the kernel tells of each connection that ends. It needs the right to administer the network.
    bool HearsEnds() const { return m_ends >= 0; }

    // What becomes readable when connections have ended; -1 when HearsEnds is false.
    int EndsHandle() const { return m_ends; }

    // The sockets that have ended since the last call, without waiting. Some may be lost when there were very many.
    std::vector<TcpSocket> TakeEnded();

private:
    std::vector<TcpSocket> Dump(uint32_t states);
    void DumpFamily(uint8_t family, uint32_t states, std::vector<TcpSocket>& sockets);

    int m_questions = -1; // netlink socket for questions and answers
    int m_ends = -1;      // netlink socket that hears of ends
};

} // namespace mordhost
