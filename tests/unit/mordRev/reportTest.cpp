// The report: when it goes out, where its values come from, and its text byte for byte.
#include <limits>

#include "unit/mordRev/decisionFixture.h"

using namespace kit;

namespace {

// Appends the encoding of a character from 0x80 on, of a surrogate too.
void AppendUtf8(std::string& text, uint32_t character) {
    const auto append = [&text](uint32_t byte) { text += static_cast<char>(byte); };
    if (character < 0x800) {
        append(0xC0 | character >> 6);
    } else if (character < 0x1'0000) {
        append(0xE0 | character >> 12);
        append(0x80 | (character >> 6 & 0x3F));
    } else {
        append(0xF0 | character >> 18);
        append(0x80 | (character >> 12 & 0x3F));
        append(0x80 | (character >> 6 & 0x3F));
    }
    append(0x80 | (character & 0x3F));
}

class Report : public DecisionFixture {
protected:
    void SetUp() override {
        DecisionFixture::SetUp();
        AddRule("GUID-1", "TYPE-1");
    }

    void Send(uint32_t reply = REPLY_BLOCK, bool blockModified = false) {
        receiver->ReportEventHandleRes(&event, rulePointers.data(), static_cast<uint32_t>(rulePointers.size()), reply,
                                       blockModified);
    }

    // The report that goes out; there must be one, with its records and nothing else.
    std::string Sent(uint32_t reply = REPLY_BLOCK, bool blockModified = false) {
        const size_t before = sink.Reports().size();
        Send(reply, blockModified);
        EXPECT_EQ(sink.Reports().size(), before + 1);
        const std::string text = sink.Reports().back();
        EXPECT_EQ(TakeRecords(), (Lines{inReport.Trace("==>enter"), inReport.Trace("ReportEventHandleRes json=" + text),
                                        inReport.Trace("==>leave")}));
        return text;
    }

    // What the report of the one rule "GUID-1" holds by default.
    ExpectedReport expected{.guids = {"GUID-1"}, .type = "TYPE-1"};

    static Lines ParamErrorRecords() { return {inReport.Trace("==>enter"), inReport.Error("param error")}; }
};

TEST_F(Report, NullEventIsAParameterErrorAndNothingIsDelivered) {
    receiver->ReportEventHandleRes(nullptr, rulePointers.data(), 1, REPLY_BLOCK, false);
    EXPECT_EQ(TakeRecords(), ParamErrorRecords());
    EXPECT_EQ(TakeCalls(), Lines{});
}

TEST_F(Report, NullRulesAreAParameterErrorAndNothingIsDelivered) {
    receiver->ReportEventHandleRes(&event, nullptr, 1, REPLY_BLOCK, false);
    EXPECT_EQ(TakeRecords(), ParamErrorRecords());
    EXPECT_EQ(TakeCalls(), Lines{});
}

TEST_F(Report, NoRulesAreAParameterErrorAndNothingIsDelivered) {
    receiver->ReportEventHandleRes(&event, rulePointers.data(), 0, REPLY_BLOCK, false);
    EXPECT_EQ(TakeRecords(), ParamErrorRecords());
    EXPECT_EQ(TakeCalls(), Lines{});
}

TEST_F(Report, NullSinkIsAParameterErrorAndNothingIsRead) {
    WatchReads();
    receiver->SetReportSink(nullptr);
    Send();
    EXPECT_EQ(TakeRecords(), ParamErrorRecords());
    EXPECT_EQ(TakeCalls(), Lines{});
}

TEST_F(Report, EmergencyModeDoesNotReport) {
    WatchReads();
    SetMode(MODE_EMERGENCY);
    Send(REPLY_ALLOW);
    EXPECT_EQ(TakeRecords(), (Lines{inReport.Trace("==>enter"), inReport.Trace("emergency mode not report")}));
    EXPECT_EQ(TakeCalls(), Lines{});
}

TEST_F(Report, DisconnectEventIsNotReported) {
    WatchReads();
    for (const int32_t flags : {0x04, 0x05, 0x14, -1}) {
        event.Int32("flags", flags);
        Send(REPLY_ALLOW);
        EXPECT_EQ(TakeRecords(), (Lines{inReport.Trace("==>enter"), inReport.Trace("disconnect event not report")}));
        EXPECT_EQ(TakeCalls(), Lines{"event.GetInt32(flags)"});
    }
}

TEST_F(Report, Flags5HaveTheDisconnectBitAndAreNotReported) {
    event.Int32("flags", 5);
    Send(REPLY_ALLOW);
    EXPECT_EQ(TakeRecords(), (Lines{inReport.Trace("==>enter"), inReport.Trace("disconnect event not report")}));
    EXPECT_EQ(TakeCalls(), Lines{});
}

TEST_F(Report, EmergencyModeGoesBeforeTheDisconnectFlag) {
    SetMode(MODE_EMERGENCY);
    event.Int32("flags", EVENT_FLAG_DISCONNECT);
    Send(REPLY_ALLOW);
    EXPECT_EQ(TakeRecords(), (Lines{inReport.Trace("==>enter"), inReport.Trace("emergency mode not report")}));
}

TEST_F(Report, AParameterErrorGoesBeforeTheMode) {
    SetMode(MODE_EMERGENCY);
    receiver->SetReportSink(nullptr);
    Send();
    EXPECT_EQ(TakeRecords(), ParamErrorRecords());
}

TEST_F(Report, EveryOtherModeAndFlagIsReported) {
    for (const uint32_t mode : {0U, 1U, 2U, 3U, 4U, 6U}) {
        SetMode(mode);
        event.Int32("flags", static_cast<int32_t>(~0x04U));
        EXPECT_EQ(Sent(), expected.Text());
    }
}

// Two rules, a blocked connection, the path of a process: the text as it goes over the edge.
TEST_F(Report, IsThisTextByteForByte) {
    rules.clear();
    rulePointers.clear();
    AddRule("rule-guid-1", "rule-type-text");
    AddRule("rule-guid-2", "another-type");
    EXPECT_EQ(Sent(), "{\n"
                      "    \"rule_guid\": [\n"
                      "        \"rule-guid-1\",\n"
                      "        \"rule-guid-2\"\n"
                      "    ],\n"
                      "    \"type\": \"rule-type-text\",\n"
                      "    \"block\": true,\n"
                      "    \"block_modified\": false,\n"
                      "    \"proc_name\": \"System\",\n"
                      "    \"proc_path\": \"System\",\n"
                      "    \"send_ip\": \"10.0.0.2\",\n"
                      "    \"send_port\": \"49152\",\n"
                      "    \"recv_ip\": \"10.0.0.1\",\n"
                      "    \"recv_port\": \"445\",\n"
                      "    \"send_mid\": \"\",\n"
                      "    \"net_drv_version\": \"20001\",\n"
                      "    \"protocol\": \"rule-type-text\"\n"
                      "}");
}

TEST_F(Report, IsDeliveredWithKind1AndItsLengthWithoutTheNul) {
    struct Sink : IReportSink {
        int32_t Report(int32_t kind, const char* text, uint32_t size) override {
            EXPECT_EQ(kind, 1);
            EXPECT_EQ(std::string(text).size(), size);
            ++reports;
            return 77;
        }
        int reports = 0;
    } strict;
    receiver->SetReportSink(&strict);
    Send();
    EXPECT_EQ(strict.reports, 1);
}

TEST_F(Report, TheResultOfTheSinkIsIgnoredAndNothingIsSentAgain) {
    for (const int32_t result : {0, 1, -1, 1007}) {
        sink.result = result;
        EXPECT_EQ(Sent(), expected.Text());
    }
}

TEST_F(Report, ARuleListOfOneIsAnArrayOfOneString) {
    EXPECT_EQ(Sent(), expected.Text());
}

TEST_F(Report, TypeAndProtocolComeFromTheFirstRule) {
    AddRule("GUID-2", "TYPE-2");
    expected.guids = {"GUID-1", "GUID-2"};
    EXPECT_EQ(Sent(), expected.Text());
}

TEST_F(Report, BlockIsTrueForReply0Alone) {
    for (const uint32_t reply : {1U, 2U, 3U, 0xFFFFFFFFU}) {
        expected.block = false;
        EXPECT_EQ(Sent(reply), expected.Text());
    }
    expected.block = true;
    EXPECT_EQ(Sent(REPLY_BLOCK), expected.Text());
}

TEST_F(Report, BlockModifiedIsTheArgument) {
    expected.block = false;
    expected.blockModified = true;
    EXPECT_EQ(Sent(REPLY_ALLOW, true), expected.Text());
    EXPECT_EQ(Sent(REPLY_ALLOW_FLAGGED, true), expected.Text());
}

TEST_F(Report, Pid4IsSystemInNameAndPath) {
    EXPECT_EQ(Sent(), expected.Text()); // and no record of a look-up
}

TEST_F(Report, Port445IsWrittenWithQuotes) {
    event.Int32("local_addr_port", 445);
    EXPECT_NE(Sent().find("    \"recv_port\": \"445\",\n"), std::string::npos);
}

TEST_F(Report, PortsAreStringsOfUnsignedDigits) {
    const struct {
        int32_t port;
        const char* text;
    } rows[] = {{0, "0"},
                {445, "445"},
                {65535, "65535"},
                {65536, "65536"},
                {-1, "4294967295"},
                {std::numeric_limits<int32_t>::min(), "2147483648"},
                {std::numeric_limits<int32_t>::max(), "2147483647"}};
    for (const auto& row : rows) {
        event.Int32("remote_addr_port", row.port).Int32("local_addr_port", 1);
        expected.sendPort = row.text;
        expected.recvPort = "1";
        EXPECT_EQ(Sent(), expected.Text());
        event.Int32("remote_addr_port", 2).Int32("local_addr_port", row.port);
        expected.sendPort = "2";
        expected.recvPort = row.text;
        EXPECT_EQ(Sent(), expected.Text());
    }
}

TEST_F(Report, DriverVersionIsASigned64BitNumber) {
    const struct {
        int64_t version;
        const char* text;
    } rows[] = {{0, "0"},
                {-1, "-1"},
                {4294967296, "4294967296"},
                {std::numeric_limits<int64_t>::max(), "9223372036854775807"},
                {std::numeric_limits<int64_t>::min(), "-9223372036854775808"}};
    for (const auto& row : rows) {
        event.Int64("net_drv", row.version);
        expected.netDrvVersion = row.text;
        EXPECT_EQ(Sent(), expected.Text());
    }
}

TEST_F(Report, DriverVersionCountsWhateverTheResultOfItsRead) {
    event.Int64WithResult("net_drv", -5, 1);
    expected.netDrvVersion = "-5";
    EXPECT_EQ(Sent(), expected.Text());
}

TEST_F(Report, MissingPropertiesHaveTheirDefaults) {
    FakeRecord bareEvent;
    bareEvent.Int32("pid", 4);
    FakeRecord bareRule;
    IEventRecord* list[] = {&bareRule, &bareRule};
    receiver->ReportEventHandleRes(&bareEvent, list, 2, REPLY_BLOCK, false);
    const ExpectedReport bare{.guids = {"", ""},
                              .type = "",
                              .sendIp = "",
                              .sendPort = "0",
                              .recvIp = "",
                              .recvPort = "0",
                              .netDrvVersion = "0"};
    EXPECT_EQ(sink.Reports(), Lines{bare.Text()});
    EXPECT_EQ(TakeRecords(), ReportRecords(bare));
}

TEST_F(Report, NumbersWhoseReadFailsAre0EvenIfTheyWereWritten) {
    event.FailingInt32("remote_addr_port", 7, 1).FailingInt32("local_addr_port", 8, 1).FailingInt32("flags", 4, 1);
    expected.sendPort = "0";
    expected.recvPort = "0";
    EXPECT_EQ(Sent(), expected.Text());
}

TEST_F(Report, SendMidIsEmptyWhateverTheEventHolds) {
    event.String("send_mid", "MID").String("mid", "MID");
    rules.front().String("mid", "MID");
    EXPECT_EQ(Sent(), expected.Text());
}

TEST_F(Report, TextsAreEscaped) {
    rules.clear();
    rulePointers.clear();
    AddRule("a\"b\\c/\n\x01\x1F\x7F", "t\t\"");
    event.String("remote_addr_ip", "\b\f\r").String("local_addr_ip", "\\\\");
    expected.guids = {"a\\\"b\\\\c/\\n\\u0001\\u001F\x7F"};
    expected.type = "t\\t\\\"";
    expected.sendIp = "\\b\\f\\r";
    expected.recvIp = "\\\\\\\\";
    EXPECT_EQ(Sent(), expected.Text());
}

TEST_F(Report, EveryControlCharacterIsEscaped) {
    std::string all;
    for (char c = 1; c < 0x20; ++c) {
        all += c;
    }
    event.String("remote_addr_ip", all);
    expected.sendIp = "\\u0001\\u0002\\u0003\\u0004\\u0005\\u0006\\u0007\\b\\t\\n\\u000B\\f\\r\\u000E\\u000F"
                      "\\u0010\\u0011\\u0012\\u0013\\u0014\\u0015\\u0016\\u0017\\u0018\\u0019\\u001A\\u001B"
                      "\\u001C\\u001D\\u001E\\u001F";
    EXPECT_EQ(Sent(), expected.Text());
}

// Surrogates, line and paragraph separators, and characters that do not exist among them.
TEST_F(Report, EveryCharacterFrom0x80IsWrittenUnchanged) {
    std::string all;
    for (uint32_t character = 0x80; character < 0x11'0000; character += character < 0x1'0000 ? 1 : 0xFFF) {
        AppendUtf8(all, character);
    }
    rules.clear();
    rulePointers.clear();
    AddRule(all, all);
    event.String("remote_addr_ip", all).String("local_addr_ip", all);
    Send();
    expected.guids = {all};
    expected.type = expected.sendIp = expected.recvIp = all;
    EXPECT_EQ(sink.Reports(), Lines{expected.Text()});
}

TEST_F(Report, EveryByteFrom0x80IsWrittenUnchanged) {
    std::string all;
    for (int c = 0x80; c < 0x100; ++c) {
        all += static_cast<char>(c);
    }
    rules.clear();
    rulePointers.clear();
    AddRule(all, all);
    event.String("remote_addr_ip", all).String("local_addr_ip", all);
    Send();
    expected.guids = {all};
    expected.type = expected.sendIp = expected.recvIp = all;
    EXPECT_EQ(sink.Reports(), Lines{expected.Text()});
}

TEST_F(Report, AThousandRulesAreAllListed) {
    expected.guids = {"GUID-1"};
    for (int i = 2; i <= 1000; ++i) {
        expected.guids.push_back("GUID-" + std::to_string(i));
        AddRule(expected.guids.back(), "OTHER");
    }
    EXPECT_EQ(Sent(), expected.Text());
}

TEST_F(Report, OnEventsOfEachReplyGoesTheFinalReply) {
    host.answer = AnswerText("GUID-1", {"MID-1"});
    Allow("MID-1", {"TYPE-1"});
    event.Int32("flags", EVENT_FLAG_REPLY_TWO);
    EXPECT_EQ(Decide(), (Verdict{true, REPLY_ALLOW_FLAGGED}));
    expected.block = false;
    EXPECT_EQ(sink.Reports(), Lines{expected.Text()});
}

} // namespace
