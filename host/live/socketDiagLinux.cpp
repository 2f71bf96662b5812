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
#include <unistd.h>

#include "system/runError.h"

namespace mordhost {

namespace {

// The kernel's numbers of the states of TCP; its own header of them does not go together with that of the C library.
constexpr uint32_t established = 1U << 1U;
constexpr uint32_t finWait1 = 1U << 4U;
constexpr uint32_t closeWait = 1U << 8U;
constexpr uint32_t lastAck = 1U << 9U;
constexpr uint32_t listening = 1U << 10U;
constexpr uint32_t closing = 1U << 11U;

// Without FIN_WAIT2: the kernel gives that state to what is left of a connection that is over, too.
constexpr uint32_t connected = established | finWait1 | closeWait | lastAck | closing;

// Room for one datagram of the kernel's, aligned for its headers.
struct alignas(nlmsghdr) Datagram {
    std::array<char, 65536> bytes;
};

[[noreturn]] void Fail(const std::string& what) {
    throw RunError("cannot watch connections: " + what + ": " + std::generic_category().message(errno));
}

int OpenNetlink() {
    return socket(AF_NETLINK, SOCK_RAW | SOCK_CLOEXEC, NETLINK_SOCK_DIAG);
}

IpAddress AddressOf(uint8_t family, const uint32_t (&words)[4]) {
    char text[INET6_ADDRSTRLEN] = "";
    inet_ntop(family, words, text, sizeof text);
    return ParseIpAddress(text).value_or(IpAddress{}); // reads a mapped address as what it stands for
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

// Appends the sockets in a datagram. Returns whether the kernel's answer goes on behind it.
bool ReadDatagram(const Datagram& datagram, size_t size, std::vector<TcpSocket>& sockets) {
    auto left = static_cast<unsigned>(size);
    for (auto* header = reinterpret_cast<const nlmsghdr*>(datagram.bytes.data()); NLMSG_OK(header, left);
         header = NLMSG_NEXT(header, left)) {
        if (header->nlmsg_type == NLMSG_DONE) {
            return false;
        }
        if (header->nlmsg_type == NLMSG_ERROR) {
            errno = -static_cast<const nlmsgerr*>(NLMSG_DATA(header))->error;
            Fail("the kernel refuses the question");
        }
        if (header->nlmsg_type == SOCK_DIAG_BY_FAMILY && header->nlmsg_len >= NLMSG_LENGTH(sizeof(inet_diag_msg))) {
            inet_diag_msg message;
            std::memcpy(&message, NLMSG_DATA(header), sizeof message);
            sockets.push_back(SocketOf(message));
        }
    }
    return true;
}

// Listens for the ends of connections; -1 without the right to.
int OpenEnds() {
    const int handle = OpenNetlink();
    if (handle < 0) {
        return -1;
    }
    sockaddr_nl address{};
    address.nl_family = AF_NETLINK;
    address.nl_groups = 1U << (SKNLGRP_INET_TCP_DESTROY - 1U) | 1U << (SKNLGRP_INET6_TCP_DESTROY - 1U);
    if (bind(handle, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
        close(handle);
        return -1;
    }
    return handle;
}

} // namespace

SocketDiag::SocketDiag() : m_questions(OpenNetlink()), m_ends(OpenEnds()) {
    if (m_questions < 0) {
        Fail("there are no socket diagnostics");
    }
}

SocketDiag::~SocketDiag() {
    for (const int handle : {m_questions, m_ends}) {
        if (handle >= 0) {
            close(handle);
        }
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
        inet_diag_req_v2 question;
    } request{};
    request.header.nlmsg_len = sizeof request;
    request.header.nlmsg_type = SOCK_DIAG_BY_FAMILY;
    request.header.nlmsg_flags = NLM_F_REQUEST | NLM_F_DUMP;
    request.question.sdiag_family = family;
    request.question.sdiag_protocol = IPPROTO_TCP;
    request.question.idiag_states = states;
    if (send(m_questions, &request, sizeof request, 0) < 0) {
        Fail("the question is not taken");
    }
    Datagram datagram;
    bool more = true;
    while (more) {
        const ssize_t size = recv(m_questions, datagram.bytes.data(), datagram.bytes.size(), 0);
        if (size < 0 && errno != EINTR) {
            Fail("there is no answer");
        }
        more = size < 0 || ReadDatagram(datagram, static_cast<size_t>(size), sockets);
    }
}

std::vector<TcpSocket> SocketDiag::TakeEnded() {
    std::vector<TcpSocket> sockets;
    Datagram datagram;
    ssize_t size = 0;
    while (m_ends >= 0 && (size = recv(m_ends, datagram.bytes.data(), datagram.bytes.size(), MSG_DONTWAIT)) > 0) {
        ReadDatagram(datagram, static_cast<size_t>(size), sockets);
    }
    return sockets;
}

} // namespace mordhost
