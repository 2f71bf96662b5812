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
    decision.reason = {
        ReasonCode::machineAllowed, "machine M is allowed for smb", {}, {{0, ReasonCode::machineAllowed, "M"}}};
    decision.reports = {"{}"};
    decision.deletion = DotHost::Deletion{"G1", "smb", true};
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

std::string TableOf(const std::vector<Decision>& decisions, bool colour = false, bool durations = true) {
    std::ostringstream out;
    const Policy policy = TestPolicy();
    Widths widths = UsualWidths();
    for (const Decision& decision : decisions) {
        Widen(widths, decision, policy);
    }
    return Shown(out, *MakeTablePresenter(out, policy, {"title", widths, colour, durations}), decisions);
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
    decision.reason.text = std::string(100000, 'r');
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

TEST(TablePresenter, TheSummaryCanLeaveOutTheDurations) {
    EXPECT_NE(TableOf({Matched()}).find("time per decision"), std::string::npos);
    const std::string table = TableOf({Matched()}, false, false);
    EXPECT_EQ(table.find("time per decision"), std::string::npos);
    EXPECT_NE(table.find("1 dot deleted, 2 left\n"), std::string::npos);
}

namespace {

const RecordContext context = {"1.2.3", "4.5.6", true};
const RecordContext noDurations = {"1.2.3", "4.5.6", false};

std::string RecordOf(const Decision& decision, const RecordContext& of) {
    std::string record;
    const Policy policy = TestPolicy();
    DecisionRecords(policy, of).Append(record, decision);
    return record;
}

constexpr auto timedSummary = R"({"events":2,"verdicts":{"allow":1,"no rule":1},"queries":1,"reports":1,)"
                              R"("dots_deleted":1,"dots_left":2,"median_ns":1500,"p99_ns":1500,)"
                              R"("times_include_logging":true})";
constexpr auto untimedSummary = R"({"events":2,"verdicts":{"allow":1,"no rule":1},"queries":1,"reports":1,)"
                                R"("dots_deleted":1,"dots_left":2})";

} // namespace

TEST(JsonLinesPresenter, HasOneLineForEachDecisionAndOneForTheSummary) {
    const Policy policy = TestPolicy();
    std::ostringstream out;
    EXPECT_EQ(Shown(out, *MakeJsonLinesPresenter(out, policy, context), {Matched(), {}}),
              RecordOf(Matched(), context) + '\n' + RecordOf({}, context) + "\n{\"summary\":" + timedSummary + "}\n");
}

TEST(JsonLinesPresenter, CanLeaveOutTheDurations) {
    const Policy policy = TestPolicy();
    std::ostringstream out;
    EXPECT_EQ(Shown(out, *MakeJsonLinesPresenter(out, policy, noDurations), {Matched(), {}}),
              RecordOf(Matched(), noDurations) + '\n' + RecordOf({}, noDurations) + "\n{\"summary\":" + untimedSummary +
                  "}\n");
}

TEST(JsonPresenter, WritesOneDocument) {
    const Policy policy = TestPolicy();
    std::ostringstream out;
    EXPECT_EQ(Shown(out, *MakeJsonPresenter(out, policy, context), {Matched(), {}}),
              "{\"decisions\":[\n" + RecordOf(Matched(), context) + ",\n" + RecordOf({}, context) +
                  "\n],\"summary\":" + timedSummary + "}\n");
    std::ostringstream empty;
    EXPECT_EQ(
        Shown(empty, *MakeJsonPresenter(empty, policy, noDurations), {}).find("{\"decisions\":[\n],\"summary\":{"), 0U)
        << empty.str();
}
