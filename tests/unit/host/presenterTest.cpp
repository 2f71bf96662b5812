#include "output/presenter.h"

#include <sstream>

#include <gtest/gtest.h>

using namespace mordhost;

namespace {

Policy TestPolicy() {
    Policy policy;
    policy.rules = {{"G1", "smb", {}, {}, {}}, {"G2", "web", {}, {}, {}}};
    return policy;
}

Decision Matched() {
    Decision decision;
    decision.event.line = 3;
    decision.event.time = "2025-11-20T09:54:12.345Z";
    decision.event.name = "connection-1";
    decision.event.flags = 0;
    decision.event.pid = 4242;
    decision.event.remoteAddress = "127.0.0.2";
    decision.event.remotePort = 40000;
    decision.event.localAddress = "127.0.0.1";
    decision.event.localPort = 445;
    decision.event.netDrv = 7;
    decision.rules = {0, 1};
    decision.asked = true;
    decision.reply = 1;
    decision.settled = true;
    decision.reason = "machine M is allowed for smb";
    decision.reports = {"{}"};
    decision.deletedDot = "G1";
    decision.process = "/usr/bin/server";
    decision.duration = std::chrono::nanoseconds(1500);
    return decision;
}

Decision WithReply(uint32_t reply) {
    Decision decision = Matched();
    decision.reply = reply;
    return decision;
}

// The output of a presenter for these decisions and the summary.
std::string Shown(std::ostringstream& out, Presenter& presenter, const std::vector<Decision>& decisions) {
    Statistics statistics;
    presenter.Begin();
    for (const Decision& decision : decisions) {
        statistics.Add(decision);
        presenter.Show(decision);
    }
    DotHost::Account calls;
    calls.queries = 1;
    presenter.End({statistics, calls, 2, true});
    return out.str();
}

std::string TableOf(const std::vector<Decision>& decisions, bool colour = false) {
    std::ostringstream out;
    const Policy policy = TestPolicy();
    Widths widths = UsualWidths();
    for (const Decision& decision : decisions) {
        Widen(widths, decision, policy);
    }
    return Shown(out, *MakeTablePresenter(out, policy, "title", widths, colour), decisions);
}

} // namespace

TEST(TablePresenter, ColumnsAreAsWideAsTheirWidestCell) {
    EXPECT_EQ(TableOf({Matched(), {}}),
              "title\n"
              "\n"
              "TIME          REMOTE END       LOCAL END      PROCESS  RULES     VERDICT          WHY\n"
              "------------  ---------------  -------------  -------  --------  ---------------  "
              "----------------------------------------\n"
              "09:54:12.345  127.0.0.2:40000  127.0.0.1:445  server   smb, web  allow            machine M is allowed "
              "for smb\n"
              "-             -:-              -:-            -        -         no rule          \n"
              "\n"
              "2 events: 1 allow, 1 no rule\n"
              "1 query, 1 report, 1 dot deleted, 2 left\n"
              "time per decision: median 1.5 us, 99th percentile 1.5 us (writing the log records included)\n");
}

TEST(TablePresenter, TheHeadingsFitIntoTheUsualWidths) {
    std::ostringstream out;
    mordhost::Table(out, UsualWidths(), false).Heading();
    EXPECT_EQ(out.str(), "TIME          REMOTE END  LOCAL END  PROCESS  RULES  VERDICT          WHY\n"
                         "------------  ----------  ---------  -------  -----  ---------------  "
                         "----------------------------------------\n");
}

TEST(TablePresenter, AWideCellMovesTheRestOfItsRow) {
    std::ostringstream out;
    const Decision decision = Matched();
    mordhost::Table(out, Widths{}, false).Row(decision, TestPolicy());
    EXPECT_EQ(out.str(), "09:54:12.345  127.0.0.2:40000  127.0.0.1:445  server  smb, web  allow  "
                         "machine M is allowed for smb\n");
}

TEST(TablePresenter, TheWidthOfARowIsBounded) {
    Policy policy;
    Decision decision = Matched();
    decision.rules.clear();
    for (size_t i = 0; i < 20000; ++i) {
        policy.rules.push_back({"G", "a rule type " + std::to_string(i), {}, {}, {}});
        decision.rules.push_back(i);
    }
    decision.process = std::string(100000, 'p');
    decision.reason = std::string(100000, 'r');
    std::ostringstream out;
    mordhost::Table table(out, UsualWidths(), false);
    table.Row(decision, policy);
    EXPECT_LT(out.str().size(), 500U);
    EXPECT_NE(out.str().find("  a rule type 0, a rule type 1, a rule ty\u2026  allow  "), std::string::npos)
        << out.str();
}

TEST(TablePresenter, VerdictsAndHeadingsAreColoured) {
    const auto row = [](const Decision& decision) {
        std::ostringstream out;
        mordhost::Table(out, Widths{}, true).Row(decision, TestPolicy());
        return out.str();
    };
    EXPECT_EQ(row(WithReply(0)),
              "09:54:12.345  127.0.0.2:40000  127.0.0.1:445  server  smb, web  \x1b[31mblock\x1b[0m  "
              "machine M is allowed for smb\n");
    EXPECT_NE(row(WithReply(1)).find("\x1b[32mallow\x1b[0m"), std::string::npos);
    EXPECT_NE(row(WithReply(2)).find("\x1b[33mallow (flagged)\x1b[0m"), std::string::npos);
    EXPECT_NE(row({}).find("\x1b[2mno rule\x1b[0m"), std::string::npos);
    EXPECT_NE(TableOf({}, true).find("\x1b[1mTIME"), std::string::npos);
    EXPECT_EQ(TableOf({Matched()}, false).find('\x1b'), std::string::npos);
}

TEST(TablePresenter, LongDurationsAreInMilliseconds) {
    Decision slow = Matched();
    slow.duration = std::chrono::nanoseconds(12345678);
    EXPECT_NE(TableOf({slow}).find("median 12.35 ms"), std::string::npos);
}

TEST(JsonPresenter, HasOneObjectForEachDecisionAndOneForTheSummary) {
    std::ostringstream out;
    const Policy policy = TestPolicy();
    EXPECT_EQ(Shown(out, *MakeJsonPresenter(out, policy), {Matched(), {}}),
              R"({"line":3,"time":"2025-11-20T09:54:12.345Z","name":"connection-1","flags":0,"pid":4242,)"
              R"("process":"/usr/bin/server","remote_addr_ip":"127.0.0.2","remote_addr_port":40000,)"
              R"("local_addr_ip":"127.0.0.1","local_addr_port":445,"net_drv":7,)"
              R"("rules":[{"guid":"G1","type":"smb"},{"guid":"G2","type":"web"}],"verdict":"allow",)"
              R"("why":"machine M is allowed for smb","reply":1,"result":true,"reports":1,"deleted_dot":"G1",)"
              R"("duration_ns":1500})"
              "\n"
              R"({"line":0,"time":null,"name":null,"flags":null,"pid":null,"process":null,"remote_addr_ip":null,)"
              R"("remote_addr_port":null,"local_addr_ip":null,"local_addr_port":null,"net_drv":null,"rules":[],)"
              R"("verdict":"no rule","why":null,"reply":null,"result":null,"reports":0,"deleted_dot":null,)"
              R"("duration_ns":null})"
              "\n"
              R"({"summary":{"events":2,"verdicts":{"allow":1,"no rule":1},"queries":1,"reports":1,"dots_deleted":1,)"
              R"("dots_left":2,"median_ns":1500,"p99_ns":1500,"times_include_logging":true}})"
              "\n");
}

TEST(JsonPresenter, TheGuidOfADeletedDotMayBeEmpty) {
    std::ostringstream out;
    const Policy policy = TestPolicy();
    Decision decision = Matched();
    decision.deletedDot = "";
    EXPECT_NE(Shown(out, *MakeJsonPresenter(out, policy), {decision}).find(R"("deleted_dot":"")"), std::string::npos);
}
