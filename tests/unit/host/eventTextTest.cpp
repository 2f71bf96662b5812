#include "output/eventText.h"

#include <gtest/gtest.h>

using namespace mordhost;

namespace {

ConnectionEvent Event(uint32_t flags) {
    ConnectionEvent event;
    event.time = "2026-11-20T09:54:12.345Z";
    event.flags = flags;
    event.process = "/usr/sbin/sshd";
    event.remoteAddress = "192.0.2.12";
    event.remotePort = 49152;
    event.localAddress = "::1";
    event.localPort = 22;
    return event;
}

std::string TextOf(OutputFormat format, const std::vector<ConnectionEvent>& events) {
    EventText text(format);
    std::string all = text.Begin();
    for (const ConnectionEvent& event : events) {
        all += text.Of(event);
    }
    return all + text.End();
}

} // namespace

TEST(EventText, IsALineForPeople) {
    EXPECT_EQ(TextOf(OutputFormat::text, {Event(0), Event(4)}),
              "09:54:12.345  192.0.2.12:49152 -> [::1]:22  sshd  connection\n"
              "09:54:12.345  192.0.2.12:49152 -> [::1]:22  sshd  disconnect\n");
}

TEST(EventText, IsALineOfJson) {
    EXPECT_EQ(TextOf(OutputFormat::jsonl, {Event(0), Event(4)}),
              EventLine(Event(0)) + '\n' + EventLine(Event(4)) + '\n');
}

TEST(EventText, IsAnArray) {
    EXPECT_EQ(TextOf(OutputFormat::json, {Event(0), Event(4)}),
              "[\n" + EventLine(Event(0)) + ",\n" + EventLine(Event(4)) + "\n]\n");
    EXPECT_EQ(TextOf(OutputFormat::json, {}), "[\n]\n");
}
