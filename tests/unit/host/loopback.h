// Servers and clients on the loopback addresses, for tests. Linux alone.
#pragma once

#include <cstdint>
#include <string>

namespace mordhostTest {

// A TCP socket, closed with its object.
class LoopbackSocket {
public:
    // Listens on `address` (of version 4 or 6), on a port that the system chooses.
    static LoopbackSocket Listen(const std::string& address);

    // Connects from `from` to the listener at `to`.
    static LoopbackSocket Connect(const std::string& from, const std::string& to, uint16_t port);

    LoopbackSocket(LoopbackSocket&& other) noexcept;
    LoopbackSocket& operator=(LoopbackSocket&&) = delete;
    ~LoopbackSocket();

    // The next connection to this listener.
    LoopbackSocket Accept() const;

    uint16_t Port() const;

private:
    explicit LoopbackSocket(int handle) : m_handle(handle) {}

    int m_handle;
};

} // namespace mordhostTest
