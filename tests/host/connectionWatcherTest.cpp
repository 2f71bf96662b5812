// The kernel's own list of connections, with real ones on the loopback addresses.
#include "live/connectionWatcher.h"

#include <algorithm>
#include <filesystem>

#include <gtest/gtest.h>
#include <unistd.h>

#include "events/timestamp.h"
#include "host/loopback.h"
#include "live/processOwners.h"

using namespace mordhost;
using mordhostTest::LoopbackSocket;

namespace {

// The events at this port of what the machine does; others may be at work on it.
std::vector<ConnectionEvent> At(uint16_t port, std::vector<ConnectionEvent> events) {
    std::erase_if(events, [port](const ConnectionEvent& event) { return event.localPort != port; });
    return events;
}

AddressRange Range(const std::string& text) {
    std::string reason;
    return ParseAddressRange(text, reason).value();
}

} // namespace

TEST(ConnectionWatcher, TellsAConnectionAndItsEnd) {
    ConnectionWatcher watcher({});
    const LoopbackSocket listener = LoopbackSocket::Listen("127.0.0.1");
    std::vector<ConnectionEvent> came;
    uint16_t remotePort = 0;
    {
        const LoopbackSocket client = LoopbackSocket::Connect("127.0.0.3", "127.0.0.1", listener.Port());
        const LoopbackSocket served = listener.Accept();
        remotePort = client.Port();
        came = At(listener.Port(), watcher.Look());
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

    const std::vector<ConnectionEvent> went = At(listener.Port(), watcher.Look());
    ASSERT_EQ(went.size(), 1U);
    EXPECT_EQ(went[0].name, "disconnect-" + came[0].name.substr(std::string("connection-").size()));
    EXPECT_EQ(went[0].flags, 4U);
    EXPECT_EQ(went[0].pid, came[0].pid);
    EXPECT_EQ(went[0].process, came[0].process);
    EXPECT_EQ(went[0].remotePort, remotePort);
}

TEST(ConnectionWatcher, AConnectionThatNobodyHasAcceptedBelongsToWhoListens) {
    ConnectionWatcher watcher({});
    const LoopbackSocket listener = LoopbackSocket::Listen("127.0.0.1");
    const LoopbackSocket client = LoopbackSocket::Connect("127.0.0.1", "127.0.0.1", listener.Port());
    const std::vector<ConnectionEvent> came = At(listener.Port(), watcher.Look());
    ASSERT_EQ(came.size(), 1U);
    EXPECT_EQ(came[0].pid, static_cast<uint32_t>(getpid()));
}

TEST(ConnectionWatcher, AConnectionOfVersion6IsToldToo) {
    ConnectionWatcher watcher({});
    const LoopbackSocket listener = LoopbackSocket::Listen("::1");
    const LoopbackSocket client = LoopbackSocket::Connect("::1", "::1", listener.Port());
    const std::vector<ConnectionEvent> came = At(listener.Port(), watcher.Look());
    ASSERT_EQ(came.size(), 1U);
    EXPECT_EQ(came[0].localAddress, "::1");
    EXPECT_EQ(came[0].remoteAddress, "::1");
}

TEST(ConnectionWatcher, AMappedAddressIsWrittenAsThatOfVersion4) {
    ConnectionWatcher watcher({});
    const LoopbackSocket listener = LoopbackSocket::Listen("::");
    const LoopbackSocket client = LoopbackSocket::Connect("127.0.0.4", "127.0.0.1", listener.Port());
    const std::vector<ConnectionEvent> came = At(listener.Port(), watcher.Look());
    ASSERT_EQ(came.size(), 1U);
    EXPECT_EQ(came[0].remoteAddress, "127.0.0.4");
    EXPECT_EQ(came[0].localAddress, "127.0.0.1");
}

TEST(ConnectionWatcher, FlaggedRemoteEndsBearTheFlagToTheirEnd) {
    ConnectionWatcher watcher({Range("127.0.0.8/29")});
    const LoopbackSocket listener = LoopbackSocket::Listen("127.0.0.1");
    {
        const LoopbackSocket first = LoopbackSocket::Connect("127.0.0.9", "127.0.0.1", listener.Port());
        const std::vector<ConnectionEvent> came = At(listener.Port(), watcher.Look());
        ASSERT_EQ(came.size(), 1U);
        EXPECT_EQ(came[0].flags, 0x10U);
        const LoopbackSocket served = listener.Accept();
    }
    std::vector<ConnectionEvent> went = At(listener.Port(), watcher.Look());
    ASSERT_EQ(went.size(), 1U);
    EXPECT_EQ(went[0].flags, 0x14U);
    const LoopbackSocket second = LoopbackSocket::Connect("127.0.0.7", "127.0.0.1", listener.Port());
    EXPECT_EQ(At(listener.Port(), watcher.Look()).at(0).flags, 0U);
}

TEST(ConnectionWatcher, AConnectionBetweenTwoLooksIsToldWhereTheKernelTellsOfEnds) {
    ConnectionWatcher watcher({});
    const LoopbackSocket listener = LoopbackSocket::Listen("127.0.0.1");
    watcher.Look();
    {
        const LoopbackSocket client = LoopbackSocket::Connect("127.0.0.3", "127.0.0.1", listener.Port());
        const LoopbackSocket served = listener.Accept();
    }
    const std::vector<ConnectionEvent> events = At(listener.Port(), watcher.Look());
    EXPECT_EQ(events.size(), watcher.SeesAll() ? 2U : 0U);
}

TEST(ProcessOwners, OfSocketsThatNobodyHasThereAreNone) {
    EXPECT_TRUE(FindOwners({}).empty());
    EXPECT_TRUE(FindOwners({1}).empty());
}
