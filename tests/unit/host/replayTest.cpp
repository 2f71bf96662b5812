// The output of mordhost for decisions of the real library.
#include <cstring>
#include <regex>
#include <sstream>

#include "unit/host/mordhostFixture.h"

using kit::ProcessResult;
using mordhostTest::TidyMordhostTest;

namespace {

constexpr auto allowList = R"({"mid_list": [{"mid": "M1", "protocol": ["smb", "W"]}]})";

// A policy with one rule and these additional members.
std::string Policy(const std::string& type, const std::string& members) {
    return R"({"rules": [{"guid": "G", "type": ")" + type + "\"}]" + (members.empty() ? "" : ", " + members) + "}";
}

std::string WithAllowList(const std::string& members) {
    return members + (members.empty() ? "" : ", ") + "\"allow_list\": " + allowList;
}

// Masks the times per decision.
std::string Masked(const std::string& text) {
    static const std::regex tableTime("median [0-9.]+ (us|ms), 99th percentile [0-9.]+ (us|ms)");
    static const std::regex jsonTime("(\"(?:duration_ns|median_ns|p99_ns)\":)[0-9]+");
    return std::regex_replace(std::regex_replace(text, tableTime, "median T, 99th percentile T"), jsonTime, "$1T");
}

class Replayed : public TidyMordhostTest {
protected:
    // The verdict and the reason of a single event, from the table.
    std::string Verdict(const std::string& policy, const std::string& event,
                        const std::vector<std::string>& options = {}) {
        const ProcessResult result = Replay(policy, event + "\n", options);
        EXPECT_EQ(result.code, 0);
        EXPECT_EQ(result.error, "");
        const size_t row = result.output.find("\n-  "); // the event has no time
        const size_t end = result.output.find('\n', row + 1);
        const std::string line = result.output.substr(row + 1, end - row - 1);
        return std::regex_replace(line.substr(line.find("]") + 1), std::regex(" {2,}"), " | ");
    }

    static std::string Event(const std::string& members = "") {
        return "{\"process\": \"p]\"" + (members.empty() ? "" : ", " + members) + "}";
    }
};

} // namespace

TEST_F(Replayed, AnAllowedMachineIsAllowedAndItsDotIsDeleted) {
    EXPECT_EQ(Verdict(Policy("smb", WithAllowList(R"("dots": {"G": ["M2", "M1"]})")), Event()),
              " | smb | allow | machine M1 is allowed for smb, its dot is deleted");
}

TEST_F(Replayed, AWebRuleIsAllowedUnderItsGuid) {
    EXPECT_EQ(Verdict(R"({"rules": [{"guid": "W", "type": "web"}], "dots": {"W": ["M1"]}, "allow_list": )" +
                          std::string(allowList) + "}",
                      Event()),
              " | web | allow | machine M1 is allowed for web rule W, its dot is deleted");
}

TEST_F(Replayed, TheFlagOfAnEventMakesAnAllowFlagged) {
    EXPECT_EQ(Verdict(Policy("smb", WithAllowList(R"("dots": {"G": ["M1"]})")), Event("\"flags\": 16")),
              " | smb | allow (flagged) | machine M1 is allowed for smb, its dot is deleted");
    EXPECT_EQ(Verdict(Policy("smb", ""), Event("\"flags\": 16")), " | smb | block | no dot is held");
}

TEST_F(Replayed, EachFailureOfARuleHasItsReason) {
    EXPECT_EQ(Verdict(Policy("smb", WithAllowList("")), Event()), " | smb | block | no dot is held");
    EXPECT_EQ(Verdict(Policy("smb", WithAllowList(R"("dots": {"G": []})")), Event()),
              " | smb | block | the dot names no machine");
    EXPECT_EQ(Verdict(Policy("smb", R"("dots": {"G": ["M1"]})"), Event()), " | smb | block | the allow list is empty");
    EXPECT_EQ(Verdict(Policy("smb", WithAllowList(R"("dots": {"G": ["M2"]})")), Event()),
              " | smb | block | no allowed machine holds a dot");
}

TEST_F(Replayed, EachFailureOfAQueryHasItsReason) {
    const auto verdict = [this](const std::string& failure, const std::string& members) {
        return Verdict(Policy("smb", members + R"("failures": {"e": ")" + failure + "\"}"), Event("\"name\": \"e\""));
    };
    EXPECT_EQ(verdict("network-error", ""), " | smb | block | network error, exception mode blocks");
    EXPECT_EQ(verdict("network-error", R"("exception_mode": "allow", )"),
              " | smb | allow | network error, exception mode allows");
    EXPECT_EQ(verdict("query-error", R"("exception_mode": "allow", )"), " | smb | block | query error");
    EXPECT_EQ(verdict("broken-answer", R"("exception_mode": "allow", )"),
              " | smb | block | broken answer to the query");
}

TEST_F(Replayed, EachModeHasItsReason) {
    const std::string dots = WithAllowList(R"("dots": {"G": ["M1"]})");
    EXPECT_EQ(Verdict(Policy("smb", R"("defender_mode": "all-forbid", )" + dots), Event()),
              " | smb | block | all-forbid mode blocks");
    EXPECT_EQ(Verdict(Policy("ssh", R"("defender_mode": "action-table", "actions": {"ssh": 1}, )" + dots), Event()),
              " | ssh | allow | action table lets type ssh pass (no allowed machine holds a dot)");
    EXPECT_EQ(Verdict(Policy("ssh", R"("defender_mode": "allow-after-decision")"), Event()),
              " | ssh | allow | allow-after-decision mode lets it pass (no dot is held)");
    EXPECT_EQ(Verdict(Policy("ssh", R"("defender_mode": "emergency")"), Event()),
              " | ssh | allow | emergency mode allows everything");
    EXPECT_EQ(Verdict(Policy("ssh", R"("defender_mode": 2, "actions": {"ssh": 1})"), Event()),
              " | ssh | block | no dot is held");
}

TEST_F(Replayed, ADisconnectNeedsNoDecision) {
    EXPECT_EQ(Verdict(Policy("smb", ""), Event("\"flags\": 4")), " | smb | allow | disconnect");
    EXPECT_EQ(Verdict(Policy("smb", R"("defender_mode": "allow-after-decision")"), Event("\"flags\": 20")),
              " | smb | allow (flagged) | disconnect");
}

TEST_F(Replayed, AnEventWithoutARuleIsNotDecided) {
    EXPECT_EQ(Verdict(R"({"rules": []})", Event()), " | - | no rule | no rule applies");
}

TEST_F(Replayed, WithoutRecordsThereIsNoReason) {
    EXPECT_EQ(Verdict(Policy("smb", ""), Event(), {"--no-log"}), " | smb | block | ");
}

TEST_F(Replayed, WritesATableAndASummary) {
    const ProcessResult result = Replay(
        R"({"machine_id": "HOST-A", "exception_mode": "allow",
            "allow_list": {"mid_list": [{"mid": "MID-7", "protocol": ["smb"]}]},
            "rules": [{"guid": "S1", "type": "smb", "local_ports": [445]},
                      {"guid": "H1", "type": "ssh", "local_ports": [22]}],
            "dots": {"S1": ["MID-7"], "S2": ["MID-7"]}, "failures": {"down": "network-error"}})",
        R"({"time": "2025-11-20T09:54:12.345Z", "pid": 4, "remote_addr_ip": "127.0.0.2", "remote_addr_port": 40000, )"
        R"("local_addr_ip": "127.0.0.1", "local_addr_port": 445})"
        "\n"
        R"({"time": "2025-11-20T09:54:13Z", "process": "/usr/sbin/sshd", "remote_addr_ip": "::1", )"
        R"("remote_addr_port": 40001, "local_addr_ip": "::1", "local_addr_port": 22})"
        "\n"
        R"({"time": "2025-11-20T09:54:14Z", "name": "down", "process": "/usr/sbin/smbd", "flags": 16, )"
        R"("remote_addr_ip": "127.0.0.2", "remote_addr_port": 40002, "local_addr_ip": "127.0.0.1", )"
        R"("local_addr_port": 445})"
        "\n");
    EXPECT_EQ(result.code, 0);
    EXPECT_EQ(result.error, "");
    EXPECT_EQ(Masked(Plain(result.output)),
              "p.json: machine id HOST-A, defender mode action-table, exception mode allow, 2 rules, 2 dots\n"
              "\n"
              "TIME          REMOTE END       LOCAL END      PROCESS  RULES  VERDICT          WHY\n"
              "------------  ---------------  -------------  -------  -----  ---------------  "
              "----------------------------------------\n"
              "09:54:12.345  127.0.0.2:40000  127.0.0.1:445  System   smb    allow            "
              "machine MID-7 is allowed for smb, its dot is deleted\n"
              "09:54:13.000  [::1]:40001      [::1]:22       sshd     ssh    block            no dot is held\n"
              "09:54:14.000  127.0.0.2:40002  127.0.0.1:445  smbd     smb    allow (flagged)  "
              "network error, exception mode allows\n"
              "\n"
              "3 events: 1 allow, 1 allow (flagged), 1 block\n"
              "3 queries, 3 reports, 1 dot deleted, 1 left\n"
              "time per decision: median T, 99th percentile T (writing the log records included)\n");
}

TEST_F(Replayed, WritesOneJsonObjectPerLine) {
    const ProcessResult result =
        Replay(Policy("smb", WithAllowList(R"("dots": {"G": ["M1"]})")),
               "\n{\"name\": \"first\", \"pid\": 4, \"remote_addr_ip\": \"127.0.0.2\"}\n", {"--format", "jsonl"});
    EXPECT_EQ(result.code, 0);
    const std::string output = Masked(Plain(result.output));
    const size_t end = output.find('\n');
    for (const char* part :
         {R"({"time":null,"event":{"line":2,"time":null,"name":"first","flags":null,"pid":4,"program":null,)"
          R"("process":null,"remote_addr_ip":"127.0.0.2","remote_addr_port":null,"local_addr_ip":null,)"
          R"("local_addr_port":null,"net_drv":null},"rules":[{"guid":"G","type":"smb",)",
          R"("outcome":"machine-allowed","machine":"M1"}],"verdict":"allow","reason":{"code":"machine-allowed",)"
          R"("text":"machine M1 is allowed for smb, its dot is deleted","overruled":null},"allowed_by":)",
          R"("dot":{"guid":"G","machine":"M1","deleted":true},"failure":null,"process":"System","reply":1,)"
          R"("result":true,"reports":1,"duration_ns":T,"policy":[{"file":"p.json","sha256":")",
          R"("versions":{"library":")"}) {
        EXPECT_LT(output.find(part), end) << part << "\nin " << output;
    }
    EXPECT_EQ(output.substr(end),
              "\n"
              R"({"summary":{"events":1,"verdicts":{"allow":1},"queries":1,"reports":1,"dots_deleted":1,)"
              R"("dots_left":0,"median_ns":T,"p99_ns":T,"times_include_logging":true}})"
              "\n");
}

TEST_F(Replayed, WritesTheReportsUnchanged) {
    const ProcessResult result =
        Replay(R"({"rules": [{"guid": "G1", "type": "smb"}, {"guid": "G2", "type": "x"}]})",
               R"({"pid": 4, "remote_addr_ip": "127.0.0.2", "remote_addr_port": 40000, "local_addr_ip": "127.0.0.1", )"
               R"("local_addr_port": 445, "net_drv": -7})"
               "\n"
               R"({"flags": 4})"
               "\n",
               {"--reports", directory.Name("reports")});
    EXPECT_EQ(result.code, 0);
    EXPECT_EQ(directory.Read("reports"), "{\n"
                                         "    \"rule_guid\": [\n"
                                         "        \"G1\",\n"
                                         "        \"G2\"\n"
                                         "    ],\n"
                                         "    \"type\": \"smb\",\n"
                                         "    \"block\": true,\n"
                                         "    \"block_modified\": false,\n"
                                         "    \"proc_name\": \"System\",\n"
                                         "    \"proc_path\": \"System\",\n"
                                         "    \"send_ip\": \"127.0.0.2\",\n"
                                         "    \"send_port\": \"40000\",\n"
                                         "    \"recv_ip\": \"127.0.0.1\",\n"
                                         "    \"recv_port\": \"445\",\n"
                                         "    \"send_mid\": \"\",\n"
                                         "    \"net_drv_version\": \"-7\",\n"
                                         "    \"protocol\": \"smb\"\n"
                                         "}\n");
}

TEST_F(Replayed, TheLogBeginsWithTheStart) {
    const ProcessResult result =
        Replay(Policy("smb", "\"machine_id\": \"HOST\""), "{\"flags\": 4}\n", {"--log", directory.Name("log")});
    EXPECT_EQ(result.code, 0);
    static const std::regex head(R"(\d+-\d\d-\d\d \d\d:\d\d:\d\d \[(TRACE|ERROR)\]\[[^\]]*\]\[([^\]]*)\] \[\d+\] )");
    const std::string records = std::regex_replace(directory.Read("log"), head, "$1 ");
    EXPECT_EQ(records.substr(0, records.find("GetLocalMid")), "TRACE logger is ready\r\nTRACE ");
    EXPECT_EQ(records.substr(records.rfind("TRACE init get mid=")).find("\r\n"),
              records.substr(records.rfind("TRACE init get mid=")).find("\r"));
    const std::string atTheEnd = "\r\nTRACE ==>enter\r\nTRACE ==>enter\r\nTRACE disconnect event not report\r\n";
    ASSERT_GE(records.size(), atTheEnd.size());
    EXPECT_EQ(records.substr(records.size() - atTheEnd.size()), atTheEnd);
}

TEST_F(Replayed, TheNextRunCanUseTheRemainingDots) {
    const std::string policy = R"({"rules": [{"guid": "G", "type": "smb"}], "dots": "dots.json", "allow_list": )" +
                               std::string(allowList) + "}";
    const std::vector<std::string> options = {"--dots", directory.Write("dots.json", R"({"G": ["M1"], "H": ["M2"]})")};
    EXPECT_EQ(Verdict(policy, Event(), options), " | smb | allow | machine M1 is allowed for smb, its dot is deleted");
    EXPECT_EQ(directory.Read("dots.json"), "{\n    \"H\": [\"M2\"]\n}\n");
    EXPECT_EQ(Verdict(policy, Event(), options), " | smb | block | no dot is held");
}

TEST_F(Replayed, WarnsOfAFailureForAnUnknownEvent) {
    const ProcessResult result =
        Replay("{\"rules\": [],\n \"failures\": {\"never\": \"query-error\"}}", "{\"name\": \"other\"}\n");
    EXPECT_EQ(result.code, 0);
    EXPECT_EQ(Plain(result.error), "mordhost: warning: p.json:2:15: no event has the name \"never\"\n");
}

TEST_F(Replayed, AccountsForAnswersThatTheLibraryKeeps) {
    // In this mode the library keeps every answer, and there is no warning. In all others it frees each of them.
    for (const char* mode : {"1", "2", "3", "4", "5"}) {
        const ProcessResult result =
            Replay(Policy("smb", std::string(R"("dots": {"G": ["M1"]}, "defender_mode": )") + mode), "{}\n{}\n{}\n");
        EXPECT_EQ(result.code, 0);
        EXPECT_EQ(result.error, "") << mode;
    }
}

TEST_F(Replayed, EventsMayComeFromTheStandardInput) {
    const ProcessResult result =
        Mordhost({"replay", directory.Write("p.json", Policy("smb", "")), "-", "--format", "jsonl"},
                 "{\"flags\": 4}\n{\"pid\": 4}\n");
    EXPECT_EQ(result.code, 0);
    EXPECT_NE(result.output.find(R"("reason":{"code":"disconnect",)"), std::string::npos);
    EXPECT_NE(result.output.find(R"("summary":{"events":2,)"), std::string::npos);
}

TEST_F(Replayed, NoEventsMakeAnEmptyRun) {
    const ProcessResult result = Replay(Policy("smb", ""), "");
    EXPECT_EQ(result.code, 0);
    EXPECT_NE(result.output.find("\n0 events\n0 queries, 0 reports, 0 dots deleted, 0 left\n"), std::string::npos)
        << result.output;
    EXPECT_EQ(result.output.find("time per decision"), std::string::npos);
}

TEST_F(Replayed, LeavesNoTemporaryDirectory) {
    EXPECT_EQ(Replay(Policy("smb", ""), "{}\n").code, 0);
    EXPECT_EQ(Replay(Policy("smb", ""), "{}\n", {"--no-log"}).code, 0);
    EXPECT_EQ(Replay(Policy("smb", ""), "{}\n", {"--libraries", directory.Name("")}).code, 4);
    EXPECT_EQ(Mordhost({"replay", directory.Name("p.json"), "-"}, "{}\n{\n").code, 3);
    ExpectNothingIsLeft();
}

TEST_F(Replayed, WritesNoColoursWithoutATerminal) {
    EXPECT_EQ(Replay(Policy("smb", ""), "{}\n").output.find('\x1b'), std::string::npos);
}

TEST_F(Replayed, TenThousandEventsAreDecidedInOrder) {
    std::string events;
    for (int i = 0; i < 10000; ++i) {
        events += "{\"remote_addr_port\": " + std::to_string(i) + "}\n";
    }
    const ProcessResult result = Replay(Policy("smb", ""), events, {"--format", "jsonl"});
    EXPECT_EQ(result.code, 0) << result.error;
    std::istringstream lines(result.output);
    std::string line;
    for (int i = 0; i < 10000; ++i) {
        ASSERT_TRUE(std::getline(lines, line)) << "ends before event " << i << result.error;
        ASSERT_NE(line.find("\"remote_addr_port\":" + std::to_string(i) + ","), std::string::npos) << line;
        ASSERT_NE(line.find("\"code\":\"no-dot\""), std::string::npos) << line;
    }
}

TEST_F(Replayed, AWideRowIsTruncatedAndTheNextRowsAreAligned) {
    std::string rules;
    for (int i = 0; i < 20000; ++i) {
        rules += std::string(i == 0 ? "" : ",") + R"({"guid": "G)" + std::to_string(i) +
                 R"(", "type": "a long type of rule )" + std::to_string(i) + "\"}";
    }
    const std::string longId(100000, 'm');
    const ProcessResult result =
        Replay("{\"machine_id\": \"" + longId + "\", \"rules\": [" + rules + "]}", "{}\n{\"flags\": 4}\n");
    EXPECT_EQ(result.code, 0) << result.error;
    std::istringstream lines(result.output);
    std::string blocked;
    std::string passed;
    for (std::string line; std::getline(lines, line);) {
        EXPECT_LT(line.size(), 500U);
        blocked = line.find("no dot is held") != std::string::npos ? line : blocked;
        passed = line.find("disconnect") != std::string::npos ? line : passed;
    }
    EXPECT_NE(blocked.find("  a long type of rule 0, a long type of r\u2026  block"), std::string::npos) << blocked;
    EXPECT_EQ(blocked.find("no dot is held"), passed.find("disconnect")) << blocked << '\n' << passed;
}
