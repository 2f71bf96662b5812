#include "decide/records.h"

#include <vector>

#include <gtest/gtest.h>

#include "decide/reportSink.h"
#include "frame/values.h"

using namespace mordhost;

namespace {

// Reads a text with two calls, as every reader does.
std::string Text(IEventRecord& record, const char* name) {
    int32_t size = 0;
    if (record.GetString(name, nullptr, &size) != RECORD_BUFFER_NEEDED || size <= 0) {
        return "absent";
    }
    std::vector<char> buffer(static_cast<size_t>(size), '#');
    return record.GetString(name, buffer.data(), &size) == RECORD_DELIVERED ? buffer.data() : "not delivered";
}

int64_t Word(IEventRecord& record, const char* name) {
    int32_t value = -1;
    return record.GetInt32(name, &value) == RECORD_DELIVERED ? value : INT64_MIN;
}

} // namespace

TEST(EventRecord, DeliversEveryValueOfTheEvent) {
    ConnectionEvent event;
    event.flags = 20;
    event.pid = 4242;
    event.remoteAddress = "127.0.0.2";
    event.remotePort = 40000;
    event.localAddress = "::1";
    event.localPort = 445;
    event.netDrv = -5000000000;
    EventRecord record(event);
    EXPECT_EQ(Word(record, "flags"), 20);
    EXPECT_EQ(Word(record, "pid"), 4242);
    EXPECT_EQ(Text(record, "remote_addr_ip"), "127.0.0.2");
    EXPECT_EQ(Word(record, "remote_addr_port"), 40000);
    EXPECT_EQ(Text(record, "local_addr_ip"), "::1");
    EXPECT_EQ(Word(record, "local_addr_port"), 445);
    int64_t version = 0;
    EXPECT_EQ(record.GetInt64("net_drv", &version), RECORD_DELIVERED);
    EXPECT_EQ(version, -5000000000);
}

TEST(EventRecord, ANumberKeepsItsBits) {
    ConnectionEvent event;
    event.flags = 0xFFFFFFFF;
    EventRecord record(event);
    EXPECT_EQ(Word(record, "flags"), -1);
}

TEST(EventRecord, AnAbsentValueIsNotDelivered) {
    const ConnectionEvent event;
    EventRecord record(event);
    for (const char* name : {"flags", "pid", "remote_addr_port", "local_addr_port", "other"}) {
        int32_t word = 77;
        EXPECT_NE(record.GetInt32(name, &word), RECORD_DELIVERED) << name;
        EXPECT_EQ(word, 77);
    }
    int64_t version = 77;
    EXPECT_NE(record.GetInt64("net_drv", &version), RECORD_DELIVERED);
    EXPECT_EQ(version, 77);
    EXPECT_EQ(Text(record, "remote_addr_ip"), "absent");
    EXPECT_EQ(Text(record, "local_addr_ip"), "absent");
    EXPECT_EQ(Text(record, "other"), "absent");
}

TEST(EventRecord, ValuesOfTheHostAreNotInTheRecord) {
    ConnectionEvent event;
    event.name = "connection-1";
    event.time = "2025-11-20T09:54:12.345Z";
    event.process = "/usr/bin/nginx";
    EventRecord record(event);
    for (const char* name : {"name", "time", "process"}) {
        EXPECT_EQ(Text(record, name), "absent") << name;
    }
}

TEST(EventRecord, ABufferThatIsTooSmallIsNotWritten) {
    ConnectionEvent event;
    event.remoteAddress = "127.0.0.2";
    EventRecord record(event);
    char buffer[4] = "###";
    int32_t size = 3;
    EXPECT_EQ(record.GetString("remote_addr_ip", buffer, &size), RECORD_BUFFER_NEEDED);
    EXPECT_EQ(size, 10);
    EXPECT_STREQ(buffer, "###");
}

TEST(RuleRecord, DeliversOnlyGuidAndType) {
    Rule rule;
    rule.guid = "G1";
    rule.type = "";
    RuleRecord record(rule);
    EXPECT_EQ(Text(record, "guid"), "G1");
    EXPECT_EQ(Text(record, "type"), "") << "an empty text is a text";
    EXPECT_EQ(Text(record, "local_ports"), "absent");
    int32_t word = 0;
    int64_t number = 0;
    EXPECT_NE(record.GetInt32("guid", &word), RECORD_DELIVERED);
    EXPECT_NE(record.GetInt64("guid", &number), RECORD_DELIVERED);
}

TEST(ReportSink, KeepsEveryReportUnchanged) {
    ReportSink sink;
    EXPECT_EQ(sink.Report(1, "{\n}rest", 3), 0);
    EXPECT_EQ(sink.Report(1, "", 0), 0);
    std::vector<std::string> reports = {"of before"};
    sink.Take(reports);
    EXPECT_EQ(reports, (std::vector<std::string>{"{\n}", ""}));
    sink.Take(reports);
    EXPECT_TRUE(reports.empty());
    sink.Report(1, "{}", 2);
    sink.Take(reports);
    EXPECT_EQ(reports, std::vector<std::string>{"{}"});
}
