#include "live/socketDiag.h"

#include <array>
#include <cerrno>
#include <cstring>
#include <string>
#include <system_error>

#include <arpa/inet.h>
#include <linux/inet_diag.h>
#include <linux/netlink.h>
#include <linux/sock_diag.h>
#include <sys/socket.h>

#include "system/runError.h"

namespace mordhost {

namespace {

// The TCP states of the kernel. Its header conflicts with that of the C library.
constexpr uint32_t established = 1U << 1U;
constexpr uint32_t finWait1 = 1U << 4U;
constexpr uint32_t closeWait = 1U << 8U;
constexpr uint32_t lastAck = 1U << 9U;
constexpr uint32_t listening = 1U << 10U;
constexpr uint32_t closing = 1U << 11U;

// Without FIN_WAIT2, which the kernel also uses for the remains of an ended connection.
constexpr uint32_t connected = established | finWait1 | closeWait | lastAck | closing;

// Buffer for a datagram of the kernel, aligned for its headers.
struct alignas(nlmsghdr) Datagram {
    std::array<char, 65536> bytes;
};

[[noreturn]] void Fail(const std::string& what) {
    throw RunError("cannot watch connections: " + what + ": " + std::generic_category().message(errno));
}

Descriptor OpenNetlink() {
    return Descriptor(socket(AF_NETLINK, SOCK_RAW | SOCK_CLOEXEC, NETLINK_SOCK_DIAG));
}

IpAddress AddressOf(uint8_t family, const uint32_t (&words)[4]) {
    return MakeIpAddress(family == AF_INET ? IpVersion::v4 : IpVersion::v6, words);
}

TcpSocket SocketOf(const inet_diag_msg& message) {
    TcpSocket tcp;
    tcp.local = AddressOf(message.idiag_family, message.id.idiag_src);
    tcp.remote = AddressOf(message.idiag_family, message.id.idiag_dst);
    tcp.localPort = ntohs(message.id.idiag_sport);
    tcp.remotePort = ntohs(message.id.idiag_dport);
    tcp.cookie = static_cast<uint64_t>(message.id.idiag_cookie[1]) << 32U | message.id.idiag_cookie[0];
    tcp.inode = message.idiag_inode;
    return tcp;
}

// Appends the sockets in a datagram. Returns whether more datagrams of the answer follow.
bool ReadDatagram(const Datagram& datagram, size_t size, std::vector<TcpSocket>& sockets) {
    auto left = static_cast<unsigned>(size);
    for (auto* header = reinterpret_cast<const nlmsghdr*>(datagram.bytes.data()); NLMSG_OK(header, left);
         header = NLMSG_NEXT(header, left)) {
        if (header->nlmsg_type == NLMSG_DONE) {
            return false;
        }
        if (header->nlmsg_type == NLMSG_ERROR) {
            errno = -static_cast<const nlmsgerr*>(NLMSG_DATA(header))->error;
            Fail("the kernel refuses the request");
        }
        if (header->nlmsg_type == SOCK_DIAG_BY_FAMILY && header->nlmsg_len >= NLMSG_LENGTH(sizeof(inet_diag_msg))) {
            inet_diag_msg message;
            std::memcpy(&message, NLMSG_DATA(header), sizeof message);
            sockets.push_back(SocketOf(message));
        }
    }
    return true;
}

// Opens a socket that receives the ends of connections. Not open if the right for that is missing.
Descriptor OpenEnds() {
    Descriptor handle = OpenNetlink();
    sockaddr_nl address{};
    address.nl_family = AF_NETLINK;
    address.nl_groups = 1U << (SKNLGRP_INET_TCP_DESTROY - 1U) | 1U << (SKNLGRP_INET6_TCP_DESTROY - 1U);
    if (bind(handle.Get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
        handle.Close();
    }
    return handle;
}

} // namespace

SocketDiag::SocketDiag() : m_requests(OpenNetlink()), m_ends(OpenEnds()) {
    if (!m_requests.IsOpen()) {
        Fail("there are no socket diagnostics");
    }
}

std::vector<TcpSocket> SocketDiag::Listeners() {
    return Dump(listening);
}

std::vector<TcpSocket> SocketDiag::Connections() {
    return Dump(connected);
}

std::vector<TcpSocket> SocketDiag::Dump(uint32_t states) {
    std::vector<TcpSocket> sockets;
    DumpFamily(AF_INET, states, sockets);
    DumpFamily(AF_INET6, states, sockets);
    return sockets;
}

void SocketDiag::DumpFamily(uint8_t family, uint32_t states, std::vector<TcpSocket>& sockets) {
    struct {
        nlmsghdr header;
        inet_diag_req_v2 filter;
    } request{};
    request.header.nlmsg_len = sizeof request;
    request.header.nlmsg_type = SOCK_DIAG_BY_FAMILY;
    request.header.nlmsg_flags = NLM_F_REQUEST | NLM_F_DUMP;
    request.filter.sdiag_family = family;
    request.filter.sdiag_protocol = IPPROTO_TCP;
    request.filter.idiag_states = states;
    if (send(m_requests.Get(), &request, sizeof request, 0) < 0) {
        Fail("the kernel does not accept the request");
    }
    Datagram datagram;
    bool more = true;
    while (more) {
        const ssize_t size = recv(m_requests.Get(), datagram.bytes.data(), datagram.bytes.size(), 0);
        if (size < 0 && errno != EINTR) {
            Fail("the kernel does not answer");
        }
        more = size < 0 || ReadDatagram(datagram, static_cast<size_t>(size), sockets);
    }
}

std::vector<TcpSocket> SocketDiag::TakeEnded() {
    std::vector<TcpSocket> sockets;
    Datagram datagram;
    while (HearsEnds()) {
        const ssize_t size = recv(m_ends.Get(), datagram.bytes.data(), datagram.bytes.size(), MSG_DONTWAIT);
        if (size > 0) {
            ReadDatagram(datagram, static_cast<size_t>(size), sockets);
        } else if (size == 0 || (errno != EINTR && errno != ENOBUFS)) { // ENOBUFS: reports were dropped, others follow
            break;
        }
    }
    return sockets;
}

} // namespace mordhost
