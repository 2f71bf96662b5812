// Events from the call to the reply.
#include "model/pinnedCase.h"

namespace {

using namespace model;

const std::string request1 = "{\n    \"guid\": [\n        \"g1\"\n    ]\n}";
const std::string allowM1 = R"({"mid_list":[{"mid":"m1","protocol":["dns"]}]})";
const std::string answerM1 = R"({"g1":{"value":1,"mid":{"m1":1}}})";

class PinnedEvent : public PinnedCase {
protected:
    // A running receiver that allows m1 for "dns", in this mode.
    void MakeRunningIn(uint32_t mode) {
        MakeRunning();
        Do(AllowListOf(allowM1));
        Do(NumberOf(8, mode));
    }

    // The last event's result and reply.
    std::string Result() { return Outcome().back(); }
};

// The report on an event of the system process with the rule "g1" of type "dns".
std::string ReportOf(const std::string& block, const std::string& sendIp, const std::string& sendPort,
                     const std::string& recvIp, const std::string& recvPort, const std::string& version) {
    const auto text = [](const std::string& name, const std::string& value) {
        return "    \"" + name + "\": \"" + value + "\"";
    };
    return "{\n    \"rule_guid\": [\n        \"g1\"\n    ],\n" + text("type", "dns") + ",\n    \"block\": " + block +
           ",\n    \"block_modified\": false,\n" + text("proc_name", "System") + ",\n" + text("proc_path", "System") +
           ",\n" + text("send_ip", sendIp) + ",\n" + text("send_port", sendPort) + ",\n" + text("recv_ip", recvIp) +
           ",\n" + text("recv_port", recvPort) + ",\n" + text("send_mid", "") + ",\n" +
           text("net_drv_version", version) + ",\n" + text("protocol", "dns") + "\n}";
}

TEST_F(PinnedEvent, MatchHasTheFullTrace) {
    MakeRunningIn(3);
    EventScript event = EventOf(0x10, {RuleRecord("g1", "dns")}, answerM1);
    event.event.texts["remote_addr_ip"] = DeliveredText("10.0.0.2");
    event.event.numbers["remote_addr_port"].value = 49152;
    event.event.texts["local_addr_ip"] = DeliveredText("10.0.0.1");
    event.event.numbers["local_addr_port"].value = 445;
    event.event.numbers["net_drv"].value = 20001;
    Do(HandlingOf(event));
    const std::string report = ReportOf("false", "10.0.0.2", "49152", "10.0.0.1", "445", "20001");
    EXPECT_EQ(SeenWithReads(), (Lines{
                                   TraceOf("HandleEvent", "==>enter"),
                                   "event.GetInt32 flags",
                                   "rule 0.GetString type null size 0",
                                   "rule 0.GetString type buffer size 4",
                                   "rule 0.GetString guid null size 0",
                                   "rule 0.GetString guid buffer size 3",
                                   "host 0.QueryDot " + request1 + " \"HOST\"",
                                   TraceOf("HandleEvent", "query dot result_json=" + answerM1),
                                   TraceOf("ParseQueryResult", "guid is:g1"),
                                   TraceOf("ParseQueryResult", "get mid=m1"),
                                   "host 0.FreeResult answer",
                                   "rule 0.GetString guid null size 0",
                                   "rule 0.GetString guid buffer size 3",
                                   "rule 0.GetString type null size 0",
                                   "rule 0.GetString type buffer size 4",
                                   TraceOf("IsMatchmid", "CMordRecv::IsMatchmid success,mid_match_output matchedm1"),
                                   TraceOf("HandleEventInner", "match mid=m1,rule guid=g1,reply:1"),
                                   "host 0.DeleteDot \"g1\" \"HOST\" 2 \"dns\"",
                                   TraceOf("HandleEventInner", "del dot,ret=1,rule guidg1"),
                                   TraceOf("ReportEventHandleRes", "==>enter"),
                                   "event.GetInt32 flags",
                                   "event.GetInt32 pid",
                                   "rule 0.GetString guid null size 0",
                                   "rule 0.GetString guid buffer size 3",
                                   "rule 0.GetString type null size 0",
                                   "rule 0.GetString type buffer size 4",
                                   "event.GetString remote_addr_ip null size 0",
                                   "event.GetString remote_addr_ip buffer size 9",
                                   "event.GetInt32 remote_addr_port",
                                   "event.GetString local_addr_ip null size 0",
                                   "event.GetString local_addr_ip buffer size 9",
                                   "event.GetInt32 local_addr_port",
                                   "event.GetInt64 net_drv preset to 0",
                                   TraceOf("ReportEventHandleRes", "ReportEventHandleRes json=" + report),
                                   "sink 0.Report 1 " + report,
                                   TraceOf("ReportEventHandleRes", "==>leave"),
                                   "= true reply 2 answers out 0",
                               }));
}

TEST_F(PinnedEvent, NullReplyHasNoEffect) {
    MakeRunningIn(3);
    EventScript event = EventOf(0, {RuleRecord("g1", "dns")}, answerM1);
    event.nullReply = true;
    Do(HandlingOf(event));
    EXPECT_EQ(SeenWithReads(), (Lines{TraceOf("HandleEvent", "==>enter"), ErrorOf("HandleEvent", "param error"),
                                      "= false reply 3735928559 answers out 0"}));
}

TEST_F(PinnedEvent, BeforeInitTheReplyIsUnchanged) {
    Do(InitOf(2)); // logs, without a host
    Do(HandlingOf(EventOf(0, {RuleRecord("g1", "dns")}, answerM1)));
    EXPECT_EQ(SeenWithReads(), (Lines{TraceOf("HandleEvent", "==>enter"), ErrorOf("HandleEvent", "param error"),
                                      "= false reply 3735928559 answers out 0"}));
}

TEST_F(PinnedEvent, NoEventNoRulesOrNoCountBlocksWithoutReport) {
    for (int missing = 0; missing < 3; ++missing) {
        m_case = TestCase();
        MakeRunningIn(4);
        EventScript event = EventOf(0, {RuleRecord("g1", "dns")}, answerM1);
        event.nullEvent = missing == 0;
        event.nullRules = missing == 1;
        event.noRules = missing == 2;
        Do(HandlingOf(event));
        EXPECT_EQ(SeenWithReads(), (Lines{TraceOf("HandleEvent", "==>enter"), ErrorOf("HandleEvent", "param error"),
                                          "= false reply 0 answers out 0"}));
    }
}

TEST_F(PinnedEvent, EmergencyPrecedesDisconnect) {
    MakeRunningIn(5);
    Do(HandlingOf(EventOf(0x14, {RuleRecord("g1", "dns")}, answerM1)));
    EXPECT_EQ(Seen(),
              (Lines{TraceOf("HandleEvent", "==>enter"), TraceOf("HandleEvent", "defender mode is emergency"),
                     TraceOf("ReportEventHandleRes", "==>enter"),
                     TraceOf("ReportEventHandleRes", "emergency mode not report"), "= true reply 2 answers out 0"}));
}

TEST_F(PinnedEvent, DisconnectIsAllowedWithoutAQuery) {
    MakeRunningIn(1);
    Do(HandlingOf(EventOf(0x05, {RuleRecord("g1", "dns")}, answerM1)));
    EXPECT_EQ(Seen(),
              (Lines{TraceOf("HandleEvent", "==>enter"), TraceOf("ReportEventHandleRes", "==>enter"),
                     TraceOf("ReportEventHandleRes", "disconnect event not report"), "= true reply 1 answers out 0"}));
}

TEST_F(PinnedEvent, DisconnectWithTheFlagOfTwoGivesTwo) {
    MakeRunningIn(3);
    Do(HandlingOf(EventOf(0x14, {RuleRecord("g1", "dns")}, answerM1)));
    EXPECT_EQ(Outcome(), (Lines{"= true reply 2 answers out 0"}));
}

TEST_F(PinnedEvent, ExceptionModeDecidesNetworkErrorsEvenInAllForbid) {
    MakeRunningIn(1);
    Do(NumberOf(9, 1));
    EventScript event = EventOf(0, {RuleRecord("g1", "dns")}, "not even JSON");
    event.queryResult = 1007;
    Do(HandlingOf(event));
    const Lines seen = Seen();
    ASSERT_GE(seen.size(), 5U);
    EXPECT_EQ(Lines(seen.begin(), seen.begin() + 5),
              (Lines{TraceOf("HandleEvent", "==>enter"), "host 0.QueryDot " + request1 + " \"HOST\"",
                     TraceOf("HandleEvent", "query dot result_json=not even JSON"),
                     TraceOf("HandleEvent", "query dot network error, exception_mode=1 ,reply=1"),
                     "host 0.FreeResult answer"}));
    EXPECT_EQ(seen.back(), "= true reply 1 answers out 0");
}

TEST_F(PinnedEvent, NetworkErrorBlocksByDefault) {
    MakeRunningIn(0);
    EventScript event = EventOf(0x10, {RuleRecord("g1", "dns")}, "");
    event.queryResult = 1007;
    event.answer.reset();
    Do(HandlingOf(event));
    EXPECT_EQ(Records()[2], TraceOf("HandleEvent", "query dot network error, exception_mode=2 ,reply=0"));
    EXPECT_EQ(Outcome()[1], "host 0.FreeResult null");
    EXPECT_EQ(Result(), "= true reply 0 answers out 0");
}

TEST_F(PinnedEvent, NullAnswerIsAQueryErrorAndIsReleased) {
    MakeRunningIn(3);
    EventScript event = EventOf(0, {RuleRecord("g1", "dns")}, "");
    event.answer.reset();
    Do(HandlingOf(event));
    EXPECT_EQ(Records()[1], TraceOf("HandleEvent", "query dot result_json="));
    EXPECT_EQ(Records()[2], TraceOf("HandleEvent", " query dot error, reply=0"));
    EXPECT_EQ(Outcome()[1], "host 0.FreeResult null");
    EXPECT_EQ(Result(), "= false reply 0 answers out 0");
}

TEST_F(PinnedEvent, UnusableAnswerIsReleasedAfterItsRecord) {
    const std::string report = ReportOf("true", "", "0", "", "0", "0");
    for (const bool answered : {true, false}) {
        m_case = TestCase();
        MakeRunningIn(3);
        EventScript event = EventOf(0, {RuleRecord("g1", "dns")}, "{");
        event.queryResult = answered ? 0 : 5;
        Do(HandlingOf(event));
        Lines expected{TraceOf("HandleEvent", "==>enter"), "host 0.QueryDot " + request1 + " \"HOST\"",
                       TraceOf("HandleEvent", "query dot result_json={")};
        if (answered) {
            expected.push_back(ErrorOf("ParseQueryResult", "data format error."));
        }
        for (const std::string& line :
             {TraceOf("HandleEvent", " query dot error, reply=0"), std::string("host 0.FreeResult answer"),
              TraceOf("ReportEventHandleRes", "==>enter"),
              TraceOf("ReportEventHandleRes", "ReportEventHandleRes json=" + report), "sink 0.Report 1 " + report,
              TraceOf("ReportEventHandleRes", "==>leave"), std::string("= false reply 0 answers out 0")}) {
            expected.push_back(line);
        }
        EXPECT_EQ(Seen(), expected);
    }
}

TEST_F(PinnedEvent, AllForbidDoesNotReleaseTheAnswer) {
    MakeRunningIn(1);
    Do(HandlingOf(EventOf(0, {RuleRecord("g1", "dns")}, answerM1)));
    EXPECT_EQ(Records()[2], TraceOf("HandleEvent", " defender mode is all forbid, reply=0"));
    EXPECT_EQ(Result(), "= true reply 0 answers out 1");
}

TEST_F(PinnedEvent, SecondOfThreeRulesMatchesAndTheTypeOfTheFirstDecides) {
    MakeRunningIn(3);
    Do(TextOf(20, R"({"ssh":1,"dns":0})"));
    Do(HandlingOf(EventOf(0, {RuleRecord("g0", "ssh"), RuleRecord("g1", "dns"), RuleRecord("g1", "dns")}, answerM1)));
    const Lines records = Records();
    EXPECT_EQ(std::count(records.begin(), records.end(), TraceOf("ModiyReply", "type=ssh,defender mode=3,action=1")),
              1);
    const Lines outcome = Outcome();
    EXPECT_EQ(outcome.size(), 5U); // query, free, delete, report, result
    EXPECT_NE(outcome[3].find("\"rule_guid\": [\n        \"g1\"\n    ],\n    \"type\": \"dns\""), std::string::npos);
    EXPECT_EQ(Result(), "= true reply 1 answers out 0");
}

TEST_F(PinnedEvent, NoneOfThreeRulesMatchesAndAllAreReported) {
    MakeRunningIn(3);
    Do(HandlingOf(EventOf(0, {RuleRecord("a", "ssh"), RuleRecord("b", "dns"), RuleRecord("a", "")}, answerM1)));
    EXPECT_NE(
        Outcome()[2].find("\"rule_guid\": [\n        \"a\",\n        \"b\",\n        \"a\"\n    ],\n    \"type\": "
                          "\"ssh\",\n    \"block\": true,\n    \"block_modified\": false"),
        std::string::npos);
    EXPECT_EQ(Result(), "= false reply 0 answers out 0");
}

TEST_F(PinnedEvent, StoppedReceiverQueriesButDecidesNoRule) {
    MakeRunningIn(4);
    Do(StopOf());
    Do(HandlingOf(EventOf(0, {RuleRecord("g1", "dns"), RuleRecord("g1", "web")}, answerM1)));
    const Lines records = Records();
    EXPECT_EQ(records[4], ErrorOf("HandleEventInner", "receving end not start"));
    EXPECT_EQ(records[5], ErrorOf("HandleEventInner", "receving end not start"));
    EXPECT_EQ(records[6], TraceOf("ModiyReply", "defender mode=4"));
    EXPECT_NE(Outcome()[2].find("\"block\": false,\n    \"block_modified\": true"), std::string::npos);
    EXPECT_EQ(Result(), "= false reply 1 answers out 0");
}

TEST_F(PinnedEvent, HostMayCallTheReceiverDuringItsCalls) {
    MakeRunning();
    EventScript event = EventOf(0, {RuleRecord("g0", "dns"), RuleRecord("g1", "dns")}, answerM1);
    event.duringQuery = {AllowListOf(allowM1)};
    event.duringDelete = {NumberOf(8, 5)};
    Do(HandlingOf(event));
    EXPECT_EQ(Records().back(), TraceOf("ReportEventHandleRes", "emergency mode not report"));
    EXPECT_EQ(Result(), "= true reply 1 answers out 0");
}

} // namespace
