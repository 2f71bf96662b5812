// Real connections on the loopback addresses.
#include "live/connectionWatcher.h"

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <thread>

#include <gtest/gtest.h>
#include <unistd.h>

#include "live/processOwners.h"
#include "policy/timestamp.h"
#include "unit/host/loopback.h"

using namespace mordhost;
using mordhostTest::LoopbackSocket;

namespace {

// The events at this port. Other processes of the machine may have connections too.
std::vector<ConnectionEvent> At(uint16_t port, std::vector<ConnectionEvent> events) {
    std::erase_if(events, [port](const ConnectionEvent& event) { return event.localPort != port; });
    return events;
}

// Looks until there are `count` events at this port. The kernel closes connections and reports their ends with a delay.
std::vector<ConnectionEvent> LookFor(size_t count, uint16_t port, ConnectionWatcher& watcher) {
    std::vector<ConnectionEvent> events = At(port, watcher.Look());
    for (int i = 0; i < 500 && events.size() < count; ++i) {
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
        const std::vector<ConnectionEvent> more = At(port, watcher.Look());
        events.insert(events.end(), more.begin(), more.end());
    }
    return events;
}

AddressRange Range(const std::string& text) {
    std::string reason;
    return ParseAddressRange(text, reason).value();
}

} // namespace

TEST(ConnectionWatcher, ReportsAConnectionAndItsEnd) {
    ConnectionWatcher watcher({});
    const LoopbackSocket listener = LoopbackSocket::Listen("127.0.0.1");
    std::vector<ConnectionEvent> came;
    uint16_t remotePort = 0;
    {
        const LoopbackSocket client = LoopbackSocket::Connect("127.0.0.3", "127.0.0.1", listener.Port());
        const LoopbackSocket served = listener.Accept();
        remotePort = client.Port();
        came = LookFor(1, listener.Port(), watcher);
        EXPECT_TRUE(At(listener.Port(), watcher.Look()).empty()) << "told once";
    }
    ASSERT_EQ(came.size(), 1U);
    EXPECT_TRUE(IsTimestamp(came[0].time));
    EXPECT_EQ(came[0].flags, 0U);
    EXPECT_EQ(came[0].pid, static_cast<uint32_t>(getpid()));
    EXPECT_EQ(came[0].process, std::filesystem::read_symlink("/proc/self/exe").native());
    EXPECT_EQ(came[0].remoteAddress, "127.0.0.3");
    EXPECT_EQ(came[0].remotePort, remotePort);
    EXPECT_EQ(came[0].localAddress, "127.0.0.1");
    EXPECT_GT(came[0].netDrv, 0);
    ASSERT_EQ(came[0].name.rfind("connection-", 0), 0U) << came[0].name;

    const std::vector<ConnectionEvent> went = LookFor(1, listener.Port(), watcher);
    ASSERT_EQ(went.size(), 1U);
    EXPECT_EQ(went[0].name, "disconnect-" + came[0].name.substr(std::string("connection-").size()));
    EXPECT_EQ(went[0].flags, 4U);
    EXPECT_EQ(went[0].pid, came[0].pid);
    EXPECT_EQ(went[0].process, came[0].process);
    EXPECT_EQ(went[0].remotePort, remotePort);
}

TEST(ConnectionWatcher, AConnectionThatIsNotAcceptedBelongsToTheListener) {
    ConnectionWatcher watcher({});
    const LoopbackSocket listener = LoopbackSocket::Listen("127.0.0.1");
    const LoopbackSocket client = LoopbackSocket::Connect("127.0.0.1", "127.0.0.1", listener.Port());
    const std::vector<ConnectionEvent> came = LookFor(1, listener.Port(), watcher);
    ASSERT_EQ(came.size(), 1U);
    EXPECT_EQ(came[0].pid, static_cast<uint32_t>(getpid()));
}

TEST(ConnectionWatcher, ReportsAConnectionOfVersion6) {
    ConnectionWatcher watcher({});
    const LoopbackSocket listener = LoopbackSocket::Listen("::1");
    const LoopbackSocket client = LoopbackSocket::Connect("::1", "::1", listener.Port());
    const std::vector<ConnectionEvent> came = LookFor(1, listener.Port(), watcher);
    ASSERT_EQ(came.size(), 1U);
    EXPECT_EQ(came[0].localAddress, "::1");
    EXPECT_EQ(came[0].remoteAddress, "::1");
}

TEST(ConnectionWatcher, AMappedAddressIsWrittenAsVersion4) {
    ConnectionWatcher watcher({});
    const LoopbackSocket listener = LoopbackSocket::Listen("::");
    const LoopbackSocket client = LoopbackSocket::Connect("127.0.0.4", "127.0.0.1", listener.Port());
    const std::vector<ConnectionEvent> came = LookFor(1, listener.Port(), watcher);
    ASSERT_EQ(came.size(), 1U);
    EXPECT_EQ(came[0].remoteAddress, "127.0.0.4");
    EXPECT_EQ(came[0].localAddress, "127.0.0.1");
}

TEST(ConnectionWatcher, ConnectionsFromFlaggedRangesAndTheirEndsHaveTheFlag) {
    ConnectionWatcher watcher({Range("127.0.0.8/29")});
    const LoopbackSocket listener = LoopbackSocket::Listen("127.0.0.1");
    {
        const LoopbackSocket first = LoopbackSocket::Connect("127.0.0.9", "127.0.0.1", listener.Port());
        const std::vector<ConnectionEvent> came = LookFor(1, listener.Port(), watcher);
        ASSERT_EQ(came.size(), 1U);
        EXPECT_EQ(came[0].flags, 0x10U);
        const LoopbackSocket served = listener.Accept();
    }
    const std::vector<ConnectionEvent> went = LookFor(1, listener.Port(), watcher);
    ASSERT_EQ(went.size(), 1U);
    EXPECT_EQ(went[0].flags, 0x14U);
    const LoopbackSocket second = LoopbackSocket::Connect("127.0.0.7", "127.0.0.1", listener.Port());
    EXPECT_EQ(LookFor(1, listener.Port(), watcher).at(0).flags, 0U);
}

TEST(ConnectionWatcher, ReportsAConnectionBetweenTwoLooksIfTheKernelReportsEnds) {
    ConnectionWatcher watcher({});
    const LoopbackSocket listener = LoopbackSocket::Listen("127.0.0.1");
    watcher.Look();
    {
        const LoopbackSocket client = LoopbackSocket::Connect("127.0.0.3", "127.0.0.1", listener.Port());
        const LoopbackSocket served = listener.Accept();
    }
    const size_t expected = watcher.SeesAll() ? 2 : 0;
    EXPECT_EQ(LookFor(expected, listener.Port(), watcher).size(), expected);
    EXPECT_TRUE(At(listener.Port(), watcher.Look()).empty());
}

TEST(ProcessOwners, SocketsThatNoProcessHasOpenHaveNone) {
    EXPECT_TRUE(FindOwners({}).empty());
    EXPECT_TRUE(FindOwners({1}).empty());
}
