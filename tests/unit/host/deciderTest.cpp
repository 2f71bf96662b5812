#include "decide/decider.h"

#include <gtest/gtest.h>

#include "policy/memoryDotStore.h"
#include "unit/host/fakeBase.h"
#include "unit/host/fakeReceiver.h"

using namespace mordhost;
using mordhostTest::FakeBase;
using mordhostTest::FakeReceiver;

namespace {

constexpr auto report = R"({"proc_name": "server", "proc_path": "/usr/bin/server"})";

class DeciderTest : public testing::Test {
protected:
    DeciderTest() {
        policy.rules = {{"A", "x", {{1, 9}}, {}, {}}, {"B", "y", {{5, 5}}, {}, {}}};
        policy.failures["bad"] = {Failure::networkError, {}};
    }

    Decision Decide(ConnectionEvent event) {
        RecordLog log(FakeBase::Factory(), true);
        Receiver receiver(object, policy, dots, sink);
        return Decider(policy, receiver, dots, sink, log).Decide(std::move(event));
    }

    static ConnectionEvent OnPort(uint16_t port) {
        ConnectionEvent event;
        event.localPort = port;
        return event;
    }

    FakeReceiver object;
    MemoryDotStore store{DotTable{{"A", {"M"}}}};
    DotHost dots{store};
    ReportSink sink;
    Policy policy;
};

} // namespace

TEST_F(DeciderTest, CallsTheLibraryWithTheRulesThatApply) {
    const Decision decision = Decide(OnPort(5));
    EXPECT_TRUE(decision.asked);
    EXPECT_EQ(decision.rules, (std::vector<size_t>{0, 1}));
    EXPECT_EQ(decision.event.localPort, 5);
    EXPECT_EQ(std::count(object.calls.begin(), object.calls.end(), "HandleEvent 0 A B"), 1);
}

TEST_F(DeciderTest, DoesNotCallTheLibraryIfNoRuleApplies) {
    const Decision decision = Decide(OnPort(10));
    EXPECT_FALSE(decision.asked);
    EXPECT_EQ(VerdictOf(decision), "no rule");
    EXPECT_EQ(decision.reason.text, "no rule applies");
    EXPECT_EQ(decision.reason.code, ReasonCode::noRule);
    for (const std::string& call : object.calls) {
        EXPECT_NE(call.rfind("HandleEvent", 0), 0U) << call;
    }
}

TEST_F(DeciderTest, TheVerdictNamesTheReply) {
    const std::vector<std::string> words = {"block", "allow", "allow (flagged)", "reply 3"};
    for (uint32_t reply = 0; reply < 4; ++reply) {
        object.reply = reply;
        object.eventResult = reply != 0;
        const Decision decision = Decide(OnPort(1));
        EXPECT_EQ(decision.reply, reply);
        EXPECT_EQ(decision.settled, reply != 0);
        EXPECT_EQ(VerdictOf(decision), words[reply]);
    }
}

TEST_F(DeciderTest, OnlyTheNamedEventFailsAsPrescribed) {
    std::vector<int32_t> codes;
    object.onEvent = [&codes](IDotHost* host, IReportSink*) {
        char* answer = nullptr;
        codes.push_back(host->QueryDot(R"({"guid": []})", "HOST", &answer));
        host->FreeResult(answer);
    };
    ConnectionEvent event = OnPort(1);
    event.name = "bad";
    Decide(event);
    event.name = "";
    Decide(event);
    EXPECT_EQ(codes, (std::vector<int32_t>{DOT_QUERY_NETWORK_ERROR, DOT_QUERY_ANSWERED}));
}

TEST_F(DeciderTest, ReportsAndDeletionsBelongToTheEvent) {
    object.onEvent = [](IDotHost* host, IReportSink* target) {
        host->DeleteDot("A", "HOST", 2, "x");
        target->Report(1, report, static_cast<uint32_t>(std::string_view(report).size()));
    };
    const Decision first = Decide(OnPort(1));
    EXPECT_EQ(first.reports, std::vector<std::string>{report});
    ASSERT_TRUE(first.deletion);
    EXPECT_EQ(first.deletion->guid, "A");
    EXPECT_TRUE(first.deletion->done);
    const Decision second = Decide(OnPort(1));
    EXPECT_EQ(second.reports.size(), 1U);
    ASSERT_TRUE(second.deletion);
    EXPECT_FALSE(second.deletion->done) << "the dot was gone already";
}

TEST_F(DeciderTest, TheProcessIsTakenFromTheEventOrElseFromTheReport) {
    object.onEvent = [](IDotHost*, IReportSink* target) {
        target->Report(1, report, static_cast<uint32_t>(std::string_view(report).size()));
    };
    ConnectionEvent event = OnPort(1);
    EXPECT_EQ(Decide(event).process, "/usr/bin/server");
    event.process = "/usr/bin/recorded";
    EXPECT_EQ(Decide(event).process, "/usr/bin/recorded");
    object.onEvent = nullptr;
    EXPECT_EQ(Decide(OnPort(1)).process, "");
}

TEST_F(DeciderTest, WithoutLogRecordsThereIsNoReason) {
    const Decision decision = Decide(OnPort(1));
    EXPECT_EQ(decision.log.text, "");
    EXPECT_EQ(decision.reason.text, "");
    EXPECT_EQ(decision.reason.code, ReasonCode::unknown);
}

TEST_F(DeciderTest, TheReasonComesFromTheRecordsOfTheEvent) {
    constexpr auto head = WIDE("2026-11-16 14:03:07 [TRACE][x.cpp 1][f] [1] ");
    const auto write = [&](const WideChar* message) {
        FakeBase::writer->WriteRecord((std::basic_string<WideChar>(head) + message + WIDE("\r\n")).c_str(), 30);
    };
    RecordLog log(FakeBase::Factory(), true);
    Receiver receiver(object, policy, dots, sink);
    Decider decider(policy, receiver, dots, sink, log);
    object.onEvent = [&](IDotHost*, IReportSink*) {
        write(WIDE("==>enter"));
        write(WIDE("query dot result is empty, reply=0,rule guidA\r\nof two lines"));
    };
    EXPECT_EQ(decider.Decide(OnPort(1)).reason.text, "no dot is held");
    EXPECT_EQ(decider.Decide(OnPort(1)).log.ends.size(), 2U);
    object.onEvent = [&](IDotHost*, IReportSink*) { write(WIDE("disconnect event not report")); };
    EXPECT_EQ(decider.Decide(OnPort(1)).reason.text, "disconnect");
    EXPECT_EQ(decider.Decide(OnPort(10)).reason.text, "no rule applies");
    object.onEvent = nullptr;
    EXPECT_EQ(decider.Decide(OnPort(1)).reason.text, "");
}

// A decision reuses the memory of the previous one.
TEST_F(DeciderTest, KeepsNothingOfThePreviousDecision) {
    RecordLog log(FakeBase::Factory(), true);
    Receiver receiver(object, policy, dots, sink);
    Decider decider(policy, receiver, dots, sink, log);
    object.onEvent = [](IDotHost* host, IReportSink* target) {
        FakeBase::writer->WriteRecord(WIDE("record\r\n"), 30);
        host->DeleteDot("A", "HOST", 2, "x");
        target->Report(1, report, static_cast<uint32_t>(std::string_view(report).size()));
    };
    ConnectionEvent event = OnPort(5);
    event.name = "first";
    event.process = "/usr/bin/first";
    event.pid = 7;
    ASSERT_TRUE(HasDeletedDot(decider.Decide(std::move(event))));
    const Decision& decision = decider.Decide(OnPort(10));
    EXPECT_FALSE(decision.asked || decision.settled || decision.deletion || decision.failure || decision.event.pid);
    EXPECT_TRUE(decision.rules.empty() && decision.reports.empty() && decision.log.ends.empty());
    EXPECT_EQ(decision.log.text + decision.process + decision.event.name, "");
    EXPECT_EQ(decision.reply, 0U);
    EXPECT_EQ(decision.duration.count(), 0);
}
