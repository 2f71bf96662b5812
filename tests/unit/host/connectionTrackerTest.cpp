#include "live/connectionTracker.h"

#include <gtest/gtest.h>

using namespace mordhost;

namespace {

using Sockets = std::vector<TcpSocket>;

TcpSocket Listener(const std::string& address, uint16_t port, uint64_t inode = 0) {
    return {ParseIpAddress(address).value(), {}, port, 0, 1000000U + port, inode};
}

TcpSocket Connection(uint64_t cookie, uint16_t localPort, const std::string& local = "127.0.0.1") {
    return {ParseIpAddress(local).value(), ParseIpAddress("127.0.0.2").value(), localPort, 40000, cookie, 0};
}

// The changes as text: "+1 +2 -1".
std::string Told(const std::vector<ConnectionChange>& changes) {
    std::string text;
    for (const ConnectionChange& change : changes) {
        text += (text.empty() ? "" : " ") + std::string(change.ended ? "-" : "+") + std::to_string(change.number);
    }
    return text;
}

} // namespace

TEST(ConnectionTracker, AConnectionToAListenerComesAndGoesOnce) {
    const Sockets listeners = {Listener("127.0.0.1", 80, 77)};
    ConnectionTracker tracker(listeners, {});
    const auto changes = tracker.Look(listeners, {Connection(5, 80)}, {});
    ASSERT_EQ(Told(changes), "+1");
    EXPECT_EQ(changes[0].connection, Connection(5, 80));
    EXPECT_EQ(changes[0].listenerInode, 77U);
    EXPECT_EQ(Told(tracker.Look(listeners, {Connection(5, 80)}, {})), "");
    EXPECT_EQ(Told(tracker.Look(listeners, {}, {})), "-1");
    EXPECT_EQ(Told(tracker.Look(listeners, {}, {})), "");
}

TEST(ConnectionTracker, ConnectionsThatExistAtTheStartAreNotReported) {
    const Sockets listeners = {Listener("127.0.0.1", 80)};
    ConnectionTracker tracker(listeners, {Connection(5, 80)});
    EXPECT_EQ(Told(tracker.Look(listeners, {Connection(5, 80), Connection(6, 80)}, {})), "+1");
    EXPECT_EQ(Told(tracker.Look(listeners, {Connection(6, 80)}, {Connection(5, 80)})), "");
}

TEST(ConnectionTracker, AConnectionWithoutAListenerIsNotInbound) {
    const Sockets listeners = {Listener("127.0.0.1", 80), Listener("127.0.0.9", 81)};
    ConnectionTracker tracker(listeners, {});
    EXPECT_EQ(Told(tracker.Look(listeners, {Connection(5, 40000), Connection(6, 81)}, {})), "");
    EXPECT_EQ(Told(tracker.Look(listeners, {}, {Connection(5, 40000)})), "");
}

TEST(ConnectionTracker, AListenerOnTheUnspecifiedAddressAcceptsAllOfItsVersion) {
    const Sockets listeners = {Listener("0.0.0.0", 80), Listener("::", 81)};
    ConnectionTracker tracker(listeners, {});
    EXPECT_EQ(Told(tracker.Look(listeners, {Connection(1, 80), Connection(2, 80, "::1")}, {})), "+1");
    EXPECT_EQ(Told(tracker.Look(listeners, {Connection(1, 80), Connection(3, 81), Connection(4, 81, "::1")}, {})),
              "+2 +3")
        << "that of version 6 takes version 4 too";
}

TEST(ConnectionTracker, AClosedListenerCountsForOneMoreLook) {
    ConnectionTracker tracker({Listener("127.0.0.1", 80, 77)}, {});
    const auto changes = tracker.Look({}, {Connection(5, 80)}, {});
    ASSERT_EQ(Told(changes), "+1");
    EXPECT_EQ(changes[0].listenerInode, 77U);
    EXPECT_EQ(Told(tracker.Look({}, {Connection(5, 80), Connection(6, 80)}, {})), "");
}

TEST(ConnectionTracker, AConnectionBetweenTwoLooksIsReportedIfItsEndIsReported) {
    const Sockets listeners = {Listener("127.0.0.1", 80)};
    ConnectionTracker tracker(listeners, {});
    EXPECT_EQ(Told(tracker.Look(listeners, {}, {Connection(5, 80), Connection(6, 80)})), "+1 +2 -1 -2");
}

TEST(ConnectionTracker, AnEndThatIsSeenAndThenReportedCountsOnce) {
    const Sockets listeners = {Listener("127.0.0.1", 80)};
    ConnectionTracker tracker(listeners, {});
    tracker.Look(listeners, {Connection(5, 80)}, {});
    EXPECT_EQ(Told(tracker.Look(listeners, {}, {})), "-1");
    EXPECT_EQ(Told(tracker.Look(listeners, {}, {Connection(5, 80)})), "");
}

TEST(ConnectionTracker, AReportedEndOverridesAnOlderList) {
    const Sockets listeners = {Listener("127.0.0.1", 80)};
    ConnectionTracker tracker(listeners, {});
    EXPECT_EQ(Told(tracker.Look(listeners, {Connection(5, 80)}, {Connection(5, 80)})), "+1 -1");
    EXPECT_EQ(Told(tracker.Look(listeners, {Connection(5, 80)}, {})), "");
}

TEST(ConnectionTracker, TheEndOfAListenerIsNotAConnection) {
    const Sockets listeners = {Listener("127.0.0.1", 80)};
    ConnectionTracker tracker(listeners, {});
    EXPECT_EQ(Told(tracker.Look({}, {}, listeners)), "");
}

TEST(ConnectionTracker, EndsAreInTheOrderOfTheirConnections) {
    const Sockets listeners = {Listener("127.0.0.1", 80)};
    ConnectionTracker tracker(listeners, {});
    EXPECT_EQ(Told(tracker.Look(listeners, {Connection(9, 80), Connection(8, 80), Connection(7, 80)}, {})), "+1 +2 +3");
    EXPECT_EQ(Told(tracker.Look(listeners, {}, {})), "-1 -2 -3");
}
