// TCP servers and clients on loopback addresses. Linux only.
#pragma once

#include <cstdint>
#include <string>

namespace mordhostTest {

// Closes its socket.
class LoopbackSocket {
public:
    // Listens at `address` (v4 or v6) and a port that the system selects.
    static LoopbackSocket Listen(const std::string& address);

    // Connects from `from` to the listener at `to`.
    static LoopbackSocket Connect(const std::string& from, const std::string& to, uint16_t port);

    LoopbackSocket(LoopbackSocket&& other) noexcept;
    LoopbackSocket& operator=(LoopbackSocket&&) = delete;
    ~LoopbackSocket();

    // Accepts the next connection to this listener.
    LoopbackSocket Accept() const;

    uint16_t Port() const;

private:
    explicit LoopbackSocket(int handle) : m_handle(handle) {}

    int m_handle;
};

} // namespace mordhostTest
