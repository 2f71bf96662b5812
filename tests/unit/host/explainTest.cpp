// mordhost explain, as built.
#include <rapidjson/document.h>

#include "policy/endpointText.h"
#include "unit/host/mordhostFixture.h"

using kit::ProcessResult;
using mordhost::ParseEndpoint;
using mordhostTest::MordhostTest;

namespace {

// Two rules on port 1, one on port 2. M1 is allowed for x; M2 for y only. "m1" differs from M1 in case.
constexpr auto policy = R"({
 "rules": [{"guid": "A", "type": "x", "local_ports": ["1-2"], "remote_addresses": ["192.0.2.0/24"]},
           {"guid": "B", "type": "web", "local_ports": [1]},
           {"guid": "C", "type": "y", "local_ports": [3], "local_addresses": ["10.0.0.1"]}],
 "allow_list": {"mid_list": [{"mid": "M1", "protocol": ["x", "B"]}, {"mid": "M2", "protocol": ["y"]}]},
 "dots": {"A": ["m1", "M2"], "B": ["M9"]}%)";

constexpr auto blocked = R"({"name": "first", "local_addr_port": 1, "remote_addr_ip": "192.0.2.9"})";

class ExplainCommand : public MordhostTest {
protected:
    ProcessResult Explain(const std::string& more, const std::string& events,
                          const std::vector<std::string>& options = {}) const {
        std::string text = policy;
        text.replace(text.find('%'), 1, more + '}');
        std::vector<std::string> arguments = {"explain", directory.Write("p.json", text)};
        if (!events.empty()) {
            arguments.push_back(directory.Write("e.jsonl", events));
        }
        arguments.insert(arguments.end(), options.begin(), options.end());
        ProcessResult result = Mordhost(arguments);
        result.output = Plain(result.output);
        result.error = Plain(result.error);
        return result;
    }

    static void ExpectLines(const std::string& output, const std::vector<std::string>& lines) {
        size_t at = 0;
        for (const std::string& line : lines) {
            const size_t found = output.find(line + '\n', at);
            ASSERT_NE(found, std::string::npos) << "no line \"" << line << "\" from " << at << " in\n" << output;
            at = found;
        }
    }
};

} // namespace

TEST_F(ExplainCommand, ShowsEachRuleWithConditionKeyIdsAndOutcome) {
    const ProcessResult result = Explain("", blocked);
    EXPECT_EQ(result.code, 0) << result.error;
    ExpectLines(result.output,
                {"  verdict         block", "  reason code     no-allowed-machine", "Rule A, type x (p.json:2:12)",
                 "  applies         local_ports: 1 is in 1-2 (p.json:2:55)",
                 "  and             remote_addresses: 192.0.2.9 is in 192.0.2.0/24 (p.json:2:84)",
                 "  protocol key    x", "  ids held        M2, m1 (p.json:6:11)", "  ids allowed     M1 (p.json:5:57)",
                 "  in both         none", "Rule B, type web (p.json:3:12)",
                 "  protocol key    B, the guid of a web rule", "  ids held        M9 (p.json:6:30)",
                 "  ids allowed     M1 (p.json:5:62)", "Then", "  query           answered",
                 "  defender mode   action-table, the default of the library", "  action table    no row for type x",
                 "  flag 0x10       not set"});
    EXPECT_EQ(result.output.find("Rule C"), std::string::npos);
}

TEST_F(ExplainCommand, NamesTheNearestMisses) {
    ExpectLines(
        Explain("", blocked).output,
        {"Nearest misses",
         "  not-allowed     the dot of the rule \"A\" (x) names \"M2\", \"m1\", and the allow list does not have "
         "them under the key \"x\" (p.json:6:11)",
         "  other-key       the allow list has the machine \"M2\" under the key \"y\" (p.json:5:96)",
         "  similar-machine the allow list has the machine \"M1\", which is not \"m1\" (p.json:5:38)"});
    ExpectLines(
        Explain("", R"({"local_addr_port": 3, "local_addr_ip": "10.0.0.1"})").output,
        {"  no-dot          the allow list has 1 machine for the rule \"C\" (y), which has no dot (p.json:5:96)"});
    ExpectLines(Explain("", R"({"local_addr_port": 3, "local_addr_ip": "10.0.0.2"})").output,
                {"  verdict         no rule",
                 "  condition       the rule \"C\" (y) does not include the local address 10.0.0.2 (p.json:4:12)"});
}

TEST_F(ExplainCommand, ListsTheChangesThatTheLibraryConfirms) {
    const std::string output = Explain("", blocked, {"--event", "first"}).output;
    ExpectLines(output, {"Changes that allow it, each tried with the library",
                         "  allow           allow the machine \"M2\" under the key \"x\" (p.json:5:57)",
                         "  allow           allow the machine \"m1\" under the key \"x\" (p.json:5:57)",
                         "  allow           allow the machine \"M9\" under the key \"B\" (p.json:5:62)",
                         "  allow           set the action of type \"x\" to 1",
                         "  allow           set the defender mode \"allow-after-decision\"",
                         "  allow           set the defender mode \"emergency\""});
    EXPECT_EQ(output.find("all-forbid"), std::string::npos) << "it would block too";
    EXPECT_EQ(Explain("", blocked).output.find("Changes"), std::string::npos) << "only for one event";
}

TEST_F(ExplainCommand, NoChangeOfTheAllowListOpensAllForbid) {
    const std::string output = Explain(R"(, "defender_mode": "all-forbid")", blocked, {"--event", "1"}).output;
    EXPECT_EQ(output.find("allow the machine"), std::string::npos);
    EXPECT_EQ(output.find("Nearest misses"), std::string::npos) << "the library looked at no rule";
    ExpectLines(output, {"  defender mode   all-forbid (p.json:6:61)",
                         "  allow           set the defender mode \"allow-after-decision\" (p.json:6:61)",
                         "  allow           set the defender mode \"emergency\" (p.json:6:61)"});
}

TEST_F(ExplainCommand, ShowsAFailureAndWhatAWorkingStoreWouldChange) {
    const std::string output =
        Explain(R"(, "dots": {"A": ["M1"]})", blocked, {"--event", "1"}).error; // "dots" twice: refused
    EXPECT_NE(output.find("dots"), std::string::npos);
    const ProcessResult down =
        Explain(R"(, "failures": {"first": "network-error"}, "exception_mode": "block")", blocked, {"--event", "1"});
    ExpectLines(down.output,
                {"  reason code     network-error-blocked", "  ids held        unknown: the query failed (p.json:6:11)",
                 "  query           network-error", "  exception mode  block (p.json:6:102)",
                 "  allow           set the exception mode \"allow\" (p.json:6:102)"});
    EXPECT_EQ(down.output.find("let the query"), std::string::npos) << "the dots name no allowed machine";
}

TEST_F(ExplainCommand, EventsBeforeTheChosenOneUseUpTheirDots) {
    const std::string events = R"({"name": "down", "local_addr_port": 3, "local_addr_ip": "10.0.0.1"})"
                               "\n"
                               R"({"local_addr_port": 3, "local_addr_ip": "10.0.0.1"})"
                               "\n"
                               R"({"name": "again", "local_addr_port": 3, "local_addr_ip": "10.0.0.1"})";
    const std::string more = R"(, "failures": {"down": "network-error"})";
    std::string text = policy;
    text.replace(text.find("\"B\": [\"M9\"]"), 11, "\"C\": [\"M2\"]");
    text.replace(text.find('%'), 1, more + '}');
    const std::string p = directory.Write("c.json", text);
    const std::string e = directory.Write("e.jsonl", events);
    ExpectLines(Mordhost({"explain", p, e, "--event", "1"}).output,
                {"  verdict         block", "  allow           let the query for dots succeed"});
    ExpectLines(Mordhost({"explain", p, e, "--event", "2"}).output, {"  verdict         allow"});
    const std::string again = Mordhost({"explain", p, e, "--event", "again"}).output;
    EXPECT_NE(again.find("  verdict         block\n"), std::string::npos);
    EXPECT_NE(again.find("none: an earlier decision deleted the dot"), std::string::npos);
    EXPECT_NE(again.find("issue a dot of the machine \"M2\" for the rule \"C\""), std::string::npos);
}

TEST_F(ExplainCommand, TakesASingleEventFromOptions) {
    ExpectLines(Explain("", "", {"--from", "192.0.2.9:4000", "--to", "10.0.0.1:1"}).output,
                {"Event: -  192.0.2.9:4000 -> 10.0.0.1:1  -  connection", "  verdict         block",
                 "Changes that allow it, each tried with the library"});
    ExpectLines(Explain(R"(, "defender_mode": "emergency")", "",
                        {"--from", "[2001:db8::1]:9", "--to", "10.0.0.1:1", "--flags", "0x10", "--pid", "7"})
                    .output,
                {"  verdict         allow (flagged)", "  query           none",
                 "  flag 0x10       set: an allow becomes allow (flagged)"});
}

TEST_F(ExplainCommand, RefusesContradictoryArguments) {
    for (const std::vector<std::string>& options :
         std::vector<std::vector<std::string>>{{"--from", "192.0.2.9", "--to", "10.0.0.1:1"},
                                               {"--pid", "7"},
                                               {"--flags", "x"},
                                               {"--event", "none"},
                                               {"--event", "2"}}) {
        EXPECT_EQ(Explain("", blocked, options).code, 2) << options[0];
    }
    for (const std::vector<std::string>& options :
         std::vector<std::vector<std::string>>{{},
                                               {"--from", "192.0.2.9"},
                                               {"--from", "x", "--to", "10.0.0.1:1"},
                                               {"--event", "1"},
                                               {"--from", "192.0.2.9", "--to", "10.0.0.1"}}) {
        EXPECT_EQ(Explain("", "", options).code, 2);
    }
}

TEST_F(ExplainCommand, AddsRecordsAndEscapesHostileText) {
    const std::string output =
        Explain("", R"({"name": "a\u001b[31m\u202e", "local_addr_port": 1, "remote_addr_ip": "192.0.2.9"})",
                {"--records"})
            .output;
    EXPECT_EQ(output.find('\x1b'), std::string::npos);
    ExpectLines(output, {"Log records of the library"});
    EXPECT_NE(output.find("==>enter"), std::string::npos);
}

TEST_F(ExplainCommand, WritesOneDocumentOrOneObjectPerLine) {
    const std::string events = std::string(blocked) + '\n' + blocked;
    rapidjson::Document document;
    document.Parse(Explain("", events, {"--format", "json"}).output.c_str());
    ASSERT_TRUE(document.IsArray());
    EXPECT_EQ(document.Size(), 2U);
    const std::string lines = Explain("", events, {"--format", "jsonl"}).output;
    EXPECT_EQ(std::count(lines.begin(), lines.end(), '\n'), 2);
}

TEST(Endpoints, HaveAnAddressAndMayHaveAPort) {
    EXPECT_EQ(ParseEndpoint("192.0.2.7")->address, "192.0.2.7");
    EXPECT_EQ(ParseEndpoint("192.0.2.7")->port, std::nullopt);
    EXPECT_EQ(ParseEndpoint("192.0.2.7:445")->port, 445);
    EXPECT_EQ(ParseEndpoint("2001:db8::7")->address, "2001:db8::7");
    EXPECT_EQ(ParseEndpoint("2001:db8::7")->port, std::nullopt);
    EXPECT_EQ(ParseEndpoint("[2001:db8::7]")->address, "2001:db8::7");
    EXPECT_EQ(ParseEndpoint("[2001:db8::7]:0")->port, 0);
    for (const char* text : {"", "x", "192.0.2", "192.0.2.7:", "192.0.2.7:65536", "192.0.2.7:-1", "192.0.2.7: 1",
                             "[2001:db8::7", "[2001:db8::7]x", "[2001:db8::7]:", "[192.0.2.7]:99999", ":445"}) {
        EXPECT_FALSE(ParseEndpoint(text)) << text;
    }
}
