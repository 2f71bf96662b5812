#include "policy/connectionEvent.h"

#include <sstream>

#include <gtest/gtest.h>

#include "policy/eventReader.h"
#include "policy/plainEvent.h"
#include "unit/host/refusal.h"

using namespace mordhost;
using mordhostTest::RefusalOf;

namespace {

constexpr auto wholeLine =
    R"({"time":"2025-11-20T09:54:12.345Z","name":"connection-1","flags":20,"pid":4242,"process":"/usr/bin/nginx",)"
    R"("remote_addr_ip":"127.0.0.2","remote_addr_port":40000,"local_addr_ip":"::1","local_addr_port":445,)"
    R"("net_drv":-20001})";

ConnectionEvent ReadEvent(const std::string& line) {
    return ReadEvent(SourceText("e.jsonl", line, 3));
}

std::string EventRefusal(const std::string& line) {
    return RefusalOf([&] { ReadEvent(line); });
}

// The events of a file.
class Lines {
public:
    explicit Lines(const std::string& text) : m_stream(text) {}

    std::optional<ConnectionEvent> Next() { return m_reader.Next(m_event) ? std::optional(m_event) : std::nullopt; }

private:
    std::istringstream m_stream;
    EventReader m_reader{m_stream, "e.jsonl"};
    ConnectionEvent m_event; // reused for all events, as in a replay
};

// The fast reader accepts the first fifteen.
const std::vector<std::string> linesOfAllKinds = {
    wholeLine,
    "{}",
    " { } \r",
    R"({"flags" : 0 ,	"pid":4294967295})",
    R"({"pid":-0})",
    R"({"net_drv":-9223372036854775808})",
    R"({"net_drv":9223372036854775807,"remote_addr_port":0,"local_addr_port":65535})",
    R"({"name":"","process":""})",
    R"({"name":"a\"b\\c\/d\n\u0041"})",
    R"({"pro\u0063ess":"C:\\a.exe"})",
    R"({"time":"2025-11-20T09:54:12Z"})",
    R"({"remote_addr_ip":"::ffff:192.0.2.1","local_addr_ip":"2001:db8::7"})",
    R"({"remote_addr_ip":"\u0031.2.3.4"})",
    R"({"net_drv":0,"name":"x"})",
    R"({"flags":4294967295})",
    R"({"name":"\u00e4"})",
    "{\"name\":\"\xC3\xA4\"}",
    "{\"name\":\"\xC3\"}",
    "\xEF\xBB\xBF{}",
    R"({"program":"a"})",
    R"({"program":"a","pid":1})",
    R"({"flags":4294967296})",
    R"({"flags":-1})",
    R"({"flags":1.0})",
    R"({"flags":1e2})",
    R"({"flags":"1"})",
    R"({"flags":null})",
    R"({"flags":true})",
    R"({"flags":{}})",
    R"({"flags":[]})",
    R"({"flags":{"flags":1}})",
    R"({"net_drv":9223372036854775808})",
    R"({"net_drv":-9223372036854775809})",
    R"({"net_drv":99999999999999999999})",
    R"({"remote_addr_port":65536})",
    R"({"name":1})",
    R"({"name":"a\u0000b"})",
    R"({"process":"\u0000"})",
    R"({"name":"\ud800"})",
    R"({"time":"yesterday"})",
    R"({"time":""})",
    R"({"remote_addr_ip":"localhost"})",
    R"({"remote_addr_ip":"1.2.3.4\u0000"})",
    R"({"local_addr_ip":""})",
    R"({"pid":1,"pid":1})",
    R"({"Pid":1})",
    R"({"":1})",
    "[]",
    "[{}]",
    "1",
    "\"flags\"",
    "null",
    "{} {}",
    "{},",
    std::string("{}\0", 3),
    std::string("{}\0{}", 5),
    "{\"name\":\"a\tb\"}",
    "{\"name\":\"a",
    "{\"pid\":1",
    "{\"pid\":01}",
    "{'pid':1}",
};

} // namespace

TEST(ConnectionEvent, ReadsEveryKey) {
    const ConnectionEvent event = ReadEvent(wholeLine);
    EXPECT_EQ(event.time, "2025-11-20T09:54:12.345Z");
    EXPECT_EQ(event.name, "connection-1");
    EXPECT_EQ(event.process, "/usr/bin/nginx");
    EXPECT_EQ(event.flags, 20U);
    EXPECT_EQ(event.pid, 4242U);
    EXPECT_EQ(event.remoteAddress, "127.0.0.2");
    EXPECT_EQ(event.remotePort, 40000);
    EXPECT_EQ(event.localAddress, "::1");
    EXPECT_EQ(event.localPort, 445);
    EXPECT_EQ(event.netDrv, -20001);
    EXPECT_EQ(event.line, 3U);
}

TEST(ConnectionEvent, IsWrittenAsItIsRead) {
    EXPECT_EQ(EventLine(ReadEvent(wholeLine)), wholeLine);
    EXPECT_EQ(EventLine(ReadEvent("{}")), "{}");
}

TEST(ConnectionEvent, NamesAProgramInsteadOfAnId) {
    const ConnectionEvent event = ReadEvent(R"({"flags":4, "program":"web server"})");
    ASSERT_TRUE(event.program);
    EXPECT_EQ(event.program->name, "web server");
    EXPECT_EQ(event.program->where.Text(), "e.jsonl:3:23");
    EXPECT_EQ(event.pid, std::nullopt);
    EXPECT_EQ(EventLine(event), R"({"flags":4,"program":"web server"})");
    EXPECT_EQ(ReadEvent(R"({"program":""})").program->name, "");
}

TEST(ConnectionEvent, AProgramBesideAnIdIsRefused) {
    EXPECT_EQ(EventRefusal(R"({"pid":1,"program":"a"})"), "e.jsonl:3:20: \"program\" and \"pid\" exclude each other");
    EXPECT_EQ(EventRefusal(R"({"program":"a","pid":0})"), "e.jsonl:3:12: \"program\" and \"pid\" exclude each other");
    EXPECT_EQ(EventRefusal(R"({"program":7})"), "e.jsonl:3:12: \"program\" must be a string, and this is a number");
    EXPECT_EQ(EventRefusal(R"({"program":null})"), "e.jsonl:3:12: \"program\" must be a string, and this is null");
}

TEST(ConnectionEvent, AKeyThatIsAbsentStaysAbsent) {
    const ConnectionEvent event = ReadEvent("{}");
    EXPECT_FALSE(event.flags || event.pid || event.remoteAddress || event.remotePort || event.localAddress ||
                 event.localPort || event.netDrv || event.program);
}

TEST(ConnectionEvent, NumbersAreAcceptedUpToTheirBounds) {
    const ConnectionEvent event = ReadEvent(R"({"flags":4294967295,"pid":4294967295,"local_addr_port":65535,)"
                                            R"("net_drv":-9223372036854775808})");
    EXPECT_EQ(event.flags, 4294967295U);
    EXPECT_EQ(event.netDrv, INT64_MIN);
    EXPECT_EQ(EventRefusal(R"({"flags":4294967296})"),
              "e.jsonl:3:10: \"flags\" must be a whole number from 0 to 4294967295, and this is 4294967296");
    EXPECT_EQ(EventRefusal(R"({"pid":-1})"),
              "e.jsonl:3:8: \"pid\" must be a whole number from 0 to 4294967295, and this is -1");
    EXPECT_EQ(EventRefusal(R"({"remote_addr_port":65536})"),
              "e.jsonl:3:21: \"remote_addr_port\" must be a whole number from 0 to 65535, and this is 65536");
    EXPECT_EQ(EventRefusal(R"({"net_drv":9223372036854775808})"),
              "e.jsonl:3:12: \"net_drv\" must be a whole number from -9223372036854775808 to 9223372036854775807, and "
              "this is 9223372036854775808");
}

TEST(ConnectionEvent, AnInvalidEventIsRefusedWithItsPosition) {
    EXPECT_EQ(EventRefusal("[]"), "e.jsonl:3:1: an event must be an object, and this is an array");
    EXPECT_EQ(EventRefusal(R"({"flags":"4"})"), "e.jsonl:3:10: \"flags\" must be a number, and this is a string");
    EXPECT_EQ(EventRefusal(R"({"remote_addr_ip":"localhost"})"), "e.jsonl:3:19: \"localhost\" is not an IP address");
    EXPECT_EQ(EventRefusal(R"({"local_addr_ip":""})"), "e.jsonl:3:18: \"\" is not an IP address");
    EXPECT_EQ(EventRefusal(R"({"time":"yesterday"})"),
              "e.jsonl:3:9: \"yesterday\" is not a time such as \"2025-11-20T09:54:12.345Z\"");
    EXPECT_EQ(EventRefusal(R"({"time":""})"), "e.jsonl:3:9: \"\" is not a time such as \"2025-11-20T09:54:12.345Z\"");
    EXPECT_EQ(
        EventRefusal(R"({"Flags":4})"),
        "e.jsonl:3:2: unknown key \"Flags\"; known here: \"time\", \"name\", \"process\", \"flags\", \"pid\", "
        "\"program\", \"remote_addr_ip\", \"remote_addr_port\", \"local_addr_ip\", \"local_addr_port\", \"net_drv\"");
    EXPECT_EQ(EventRefusal(R"({"pid":1,"pid":1})"), "e.jsonl:3:10: \"pid\" is repeated");
    EXPECT_EQ(EventRefusal("{"), "e.jsonl:3:2: Missing a name for object member.");
}

TEST(EventReader, ReturnsOneEventPerLine) {
    Lines lines("{\"pid\":1}\n{\"pid\":2}\r\n{\"pid\":3}");
    EXPECT_EQ(lines.Next()->pid, 1U);
    EXPECT_EQ(lines.Next()->pid, 2U);
    const auto third = lines.Next();
    EXPECT_EQ(third->pid, 3U);
    EXPECT_EQ(third->line, 3U);
    EXPECT_FALSE(lines.Next());
}

TEST(EventReader, SkipsButCountsLinesOfWhiteSpace) {
    Lines lines("\n \t\r\n{\"pid\":1}\n\n");
    EXPECT_EQ(lines.Next()->line, 3U);
    EXPECT_FALSE(lines.Next());
}

TEST(EventReader, AnInvalidLineIsRefusedWithItsNumber) {
    Lines lines("{}\n{}\n{\"pid\": x}\n");
    EXPECT_TRUE(lines.Next());
    EXPECT_TRUE(lines.Next());
    EXPECT_EQ(RefusalOf([&] { lines.Next(); }), "e.jsonl:3:9: Invalid value.");
}

TEST(EventReader, AnEventOnTwoLinesIsRefused) {
    Lines lines("{\"pid\":\n1}\n");
    EXPECT_EQ(RefusalOf([&] { lines.Next(); }), "e.jsonl:1:8: Invalid value.");
}

TEST(EventReader, KeepsNoValueOfThePreviousEvent) {
    Lines lines(std::string(wholeLine) + "\n{}\n" + R"({"program":"a"})" + "\n" + R"({"pid":0})" + "\n");
    EXPECT_EQ(EventLine(*lines.Next()), wholeLine);
    EXPECT_EQ(EventLine(*lines.Next()), "{}");
    EXPECT_EQ(EventLine(*lines.Next()), R"({"program":"a"})");
    EXPECT_EQ(EventLine(*lines.Next()), R"({"pid":0})");
}

// The strict reader defines what an event is. The fast reader must agree with it.
TEST(EventReader, TheFastReaderAgreesWithTheStrictOneOrDeclines) {
    size_t quick = 0;
    for (const std::string& line : linesOfAllKinds) {
        SCOPED_TRACE(line);
        std::string spoilt = line;
        ConnectionEvent event;
        if (ReadPlainEvent(spoilt, event)) {
            ++quick;
            EXPECT_EQ(EventLine(event), EventLine(ReadEvent(line)));
        }
    }
    EXPECT_EQ(quick, 15U) << "the rest is refused, or left to the strict way";
}

// Replaces each byte of a line by each of these bytes, and removes each byte.
TEST(EventReader, TheFastReaderAgreesOnDamagedLines) {
    const std::string replacements("\0\1\x1F \"\\,:{}[]0-.eu\x7F\x80\xC3", 20);
    size_t quick = 0;
    const auto compare = [&quick](std::string line) {
        const std::string kept = line;
        ConnectionEvent event;
        if (ReadPlainEvent(line, event)) {
            ++quick;
            ASSERT_EQ(RefusalOf([&] { EXPECT_EQ(EventLine(event), EventLine(ReadEvent(kept))); }), "accepted") << kept;
        }
    };
    const std::string whole = wholeLine;
    for (size_t place = 0; place < whole.size(); ++place) {
        std::string shorter = whole;
        compare(shorter.erase(place, 1));
        for (const char replacement : replacements) {
            std::string damaged = whole;
            damaged[place] = replacement;
            compare(damaged);
        }
    }
    EXPECT_GT(quick, 100U);
}
