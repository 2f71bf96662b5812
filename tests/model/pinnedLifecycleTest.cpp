// Lifecycle, properties and reports.
#include "model/pinnedCase.h"

namespace {

using namespace model;

class PinnedLifecycle : public PinnedCase {};

const Lines refusedProperty = {ErrorOf("SetProperty", "param error, set property fail"), "= false"};

TEST_F(PinnedLifecycle, OnlyTheFirstInitHasAnEffect) {
    Do(InitOf(0));
    EXPECT_EQ(Seen(), (Lines{TraceOf("InitLogMoudle", "logger is ready"),
                             TraceOf("GetLocalMid", "GetLocalMid()-Get local mid is:HOST"),
                             TraceOf("Init", "init get mid=HOST"), "= true"}));
    Do(InitOf(1));
    EXPECT_EQ(Seen(), (Lines{"= true"}));
    Do(HandlingOf(EventOf(0, {RuleRecord("g", "")}, "")));
    EXPECT_TRUE(Outcome()[0].starts_with("host 0.QueryDot "));
}

TEST_F(PinnedLifecycle, InitAfterUninitSetsTheHostAndKeepsTheMid) {
    Do(InitOf(0));
    Do(TextOf(6, "OTHER"));
    Do(UninitOf());
    EXPECT_EQ(Seen(), (Lines{"= true"}));
    Do(InitOf(1));
    EXPECT_EQ(Seen(),
              (Lines{TraceOf("InitLogMoudle", "logger is ready"), TraceOf("Init", "init get mid=OTHER"), "= true"}));
    Do(HandlingOf(EventOf(0, {RuleRecord("g", "")}, "")));
    EXPECT_EQ(Outcome()[0], "host 1.QueryDot {\n    \"guid\": [\n        \"g\"\n    ]\n} \"OTHER\"");
}

TEST_F(PinnedLifecycle, InitFailsWithoutHostOrLogSettings) {
    Do(InitOf(2));
    EXPECT_EQ(Seen(), (Lines{TraceOf("InitLogMoudle", "logger is ready"), "= false"}));
    SiblingState siblings;
    siblings.settlesLogging = false;
    Do(SiblingsOf(siblings));
    Do(InitOf(0));
    EXPECT_EQ(Seen(), (Lines{"= false"}));
    Do(NumberOf(8, 1));
    EXPECT_EQ(Seen(), refusedProperty);
}

TEST_F(PinnedLifecycle, InitWithoutAMidSucceedsAndRetries) {
    m_case.siblings.machineIdResult = 1;
    Do(InitOf(0));
    EXPECT_EQ(Seen(),
              (Lines{TraceOf("InitLogMoudle", "logger is ready"), TraceOf("GetLocalMid", "Get local mid failed!"),
                     TraceOf("Init", "init get mid="), "= true"}));
    SiblingState empty;
    empty.machineId.clear();
    Do(UninitOf());
    Do(SiblingsOf(empty));
    Do(InitOf(0));
    EXPECT_EQ(Seen(), (Lines{TraceOf("InitLogMoudle", "logger is ready"), TraceOf("Init", "init get mid="), "= true"}));
    Do(UninitOf());
    Do(SiblingsOf(SiblingState()));
    Do(InitOf(0));
    EXPECT_EQ(Seen()[2], TraceOf("Init", "init get mid=HOST"));
}

TEST_F(PinnedLifecycle, OnlyStopReturnsFalse) {
    for (const Operation& step : {StartOf(), StartOf(), UninitOf(), SinkOf(2), SinkOf(1), ReadingOf(77)}) {
        Do(step);
        EXPECT_EQ(Seen(), (Lines{"= true"}));
    }
    Do(StopOf());
    EXPECT_EQ(Seen(), (Lines{"= false"}));
}

TEST_F(PinnedLifecycle, PropertiesNeedAHostDataAndASize) {
    Do(InitOf(2)); // logs, without a host
    Do(NumberOf(8, 1));
    EXPECT_EQ(Seen(), refusedProperty);
    Do(InitOf(0));
    Do(UninitOf());
    Do(NumberOf(8, 77));
    EXPECT_EQ(Seen(), (Lines{"= true"}));
    Do(NullDataOf(8));
    EXPECT_EQ(Seen(), refusedProperty);
    Do(ZeroSizeOf(9, 1));
    EXPECT_EQ(Seen(), refusedProperty);
    Do(NumberOf(7, 1));
    EXPECT_EQ(Seen(), (Lines{"= false"}));
    Do(TextOf(6, ""));
    EXPECT_EQ(Seen(), (Lines{ErrorOf("SetProperty", "set mid fail"), "= false"}));
}

TEST_F(PinnedLifecycle, NoReportWithoutASink) {
    MakeRunning();
    Do(SinkOf(2));
    Do(HandlingOf(EventOf(4, {RuleRecord("g", "")}, "")));
    EXPECT_EQ(Records().back(), ErrorOf("ReportEventHandleRes", "param error"));
}

TEST_F(PinnedLifecycle, UnknownProcessIsReportedWithoutAName) {
    MakeRunning();
    EventScript event = EventOf(0, {RuleRecord("g", "x\"y")}, "{}");
    event.event.numbers.Erase("pid");
    event.event.numbers["remote_addr_port"].value = -1;
    event.event.numbers["net_drv"].value = -5;
    event.event.numbers["net_drv"].result = 9;
    event.event.numbers["local_addr_port"].value = 445;
    event.event.numbers["local_addr_port"].result = 1;
    Do(HandlingOf(event));
    EXPECT_EQ(Records()[4], ErrorOf("GetProcPathByPid", "Open process failed! pid=0 ,lasterror=N"));
    const std::string report = Outcome()[2];
    EXPECT_EQ(report.substr(report.find("\"type\"")), "\"type\": \"x\\\"y\",\n"
                                                      "    \"block\": true,\n"
                                                      "    \"block_modified\": false,\n"
                                                      "    \"proc_name\": \"\",\n"
                                                      "    \"proc_path\": \"\",\n"
                                                      "    \"send_ip\": \"\",\n"
                                                      "    \"send_port\": \"4294967295\",\n"
                                                      "    \"recv_ip\": \"\",\n"
                                                      "    \"recv_port\": \"0\",\n"
                                                      "    \"send_mid\": \"\",\n"
                                                      "    \"net_drv_version\": \"-5\",\n"
                                                      "    \"protocol\": \"x\\\"y\"\n"
                                                      "}");
}

} // namespace
