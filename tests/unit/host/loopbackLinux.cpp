#include "unit/host/loopback.h"

#include <cerrno>
#include <stdexcept>
#include <system_error>
#include <utility>

#include <arpa/inet.h>
#include <sys/socket.h>
#include <unistd.h>

namespace mordhostTest {

namespace {

int Check(int result) {
    if (result < 0) {
        throw std::system_error(errno, std::generic_category());
    }
    return result;
}

struct Address {
    sockaddr_storage storage{};
    socklen_t size = 0;

    Address(const std::string& text, uint16_t port) {
        auto* const v4 = reinterpret_cast<sockaddr_in*>(&storage);
        auto* const v6 = reinterpret_cast<sockaddr_in6*>(&storage);
        if (inet_pton(AF_INET, text.c_str(), &v4->sin_addr) == 1) {
            v4->sin_family = AF_INET;
            v4->sin_port = htons(port);
            size = sizeof *v4;
        } else if (inet_pton(AF_INET6, text.c_str(), &v6->sin6_addr) == 1) {
            v6->sin6_family = AF_INET6;
            v6->sin6_port = htons(port);
            size = sizeof *v6;
        } else {
            throw std::invalid_argument(text);
        }
    }

    const sockaddr* Get() const { return reinterpret_cast<const sockaddr*>(&storage); }
    int Open() const { return Check(socket(storage.ss_family, SOCK_STREAM | SOCK_CLOEXEC, 0)); }
};

} // namespace

LoopbackSocket LoopbackSocket::Listen(const std::string& address) {
    const Address at(address, 0);
    LoopbackSocket listener(at.Open());
    Check(bind(listener.m_handle, at.Get(), at.size));
    Check(listen(listener.m_handle, 100));
    return listener;
}

LoopbackSocket LoopbackSocket::Connect(const std::string& from, const std::string& to, uint16_t port) {
    const Address near(from, 0);
    const Address far(to, port);
    LoopbackSocket client(far.Open());
    Check(bind(client.m_handle, near.Get(), near.size));
    Check(connect(client.m_handle, far.Get(), far.size));
    return client;
}

LoopbackSocket::LoopbackSocket(LoopbackSocket&& other) noexcept : m_handle(std::exchange(other.m_handle, -1)) {}

LoopbackSocket::~LoopbackSocket() {
    if (m_handle >= 0) {
        close(m_handle);
    }
}

LoopbackSocket LoopbackSocket::Accept() const {
    return LoopbackSocket(Check(accept4(m_handle, nullptr, nullptr, SOCK_CLOEXEC)));
}

uint16_t LoopbackSocket::Port() const {
    sockaddr_storage address{};
    socklen_t size = sizeof address;
    Check(getsockname(m_handle, reinterpret_cast<sockaddr*>(&address), &size));
    return ntohs(address.ss_family == AF_INET ? reinterpret_cast<sockaddr_in&>(address).sin_port
                                              : reinterpret_cast<sockaddr_in6&>(address).sin6_port);
}

} // namespace mordhostTest
